#include "bench/workload.h"

#include "pellum/error/exception.h"
#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"
#include "tavik/value/array_base.h"
#include "tavik/value/data_array.h"
#include "types/api/event/event.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <utility>

namespace Bench {

namespace {

using Tavik::Any;
using Tavik::Property;
using EventArray = Tavik::DataArray<Morvane::Event::Event>;

/// Another value of the same length: what has to be read to its end to be told apart.
void ChangeScalar(Any* object, const Property& property) {
    switch (property.GetType()->GetKind()) {
    case Tavik::TypeKind::String: {
        std::string text;
        property.Get(object, &text);
        text.empty() ? text.push_back('x') : void(text.back() = text.back() == 'x' ? 'y' : 'x');
        property.Set(object, &text);
        return;
    }
    case Tavik::TypeKind::Boolean: {
        bool value = false;
        property.Get(object, &value);
        value = !value;
        property.Set(object, &value);
        return;
    }
    case Tavik::TypeKind::Int: {
        std::int32_t value = 0;
        property.Get(object, &value);
        value ^= 1;
        property.Set(object, &value);
        return;
    }
    case Tavik::TypeKind::Long: {
        std::int64_t value = 0;
        property.Get(object, &value);
        value ^= 1;
        property.Set(object, &value);
        return;
    }
    default:
        throw Pellum::Exception(
            std::string("no other value is known for the last property, ") + property.GetName());
    }
}

void ChangeLastProperty(Any* value) {
    if (const auto* array = dynamic_cast<const Tavik::DataArrayBase*>(value)) {
        ChangeLastProperty(array->GetElement(array->GetLength() - 1));
        return;
    }
    const auto* object = dynamic_cast<const Tavik::DataObject*>(value);
    if (object == nullptr) {
        throw Pellum::Exception("the last property holds neither a plain value nor data objects");
    }
    const auto properties = object->_GetDataType()->GetProperties();
    const auto last =
        std::find_if(properties.rbegin(), properties.rend(), [object](const Property* property) {
            return property->IsSet(object);
        });
    if (last == properties.rend()) {
        throw Pellum::Exception("the last object has no property");
    }
    if ((*last)->IsCounted()) {
        // What it leads to is part of the copy that is being changed.
        ChangeLastProperty(const_cast<Any*>((*last)->GetCounted(object)));
    } else {
        ChangeScalar(value, **last);
    }
}

Workload MakeWorkload(const std::string& name, Pellum::Ref<Any> value) {
    Workload workload;
    workload.name = name;
    workload.text = Tavik::Json::Encode(value.Get());
    workload.same = Pellum::Ref<Any>(value->_Clone());
    workload.lastDiffers = Pellum::Ref<Any>(value->_Clone());
    workload.value = std::move(value);
    ChangeLastProperty(workload.lastDiffers.Get());
    if (!workload.value->_IsEqual(workload.same.Get(), false)
        || workload.value->_IsEqual(workload.lastDiffers.Get(), false)
        || !Tavik::Json::Decode(workload.text)->_IsEqual(workload.value.Get(), false)) {
        throw Pellum::Exception(name + " is not what it should be");
    }
    return workload;
}

Workload LoadWorkload(const std::string& name) {
    const std::string path = MORVANE_SOURCE_EXAMPLES "/" + name + ".json";
    return MakeWorkload(
        name, Tavik::Json::Decode(Tavik::Json::ReadInput(path, Tavik::Json::DecodeLimits().inputBytes)));
}

} // namespace

const std::vector<Workload>& GetWorkloads() {
    static const std::vector<Workload> workloads = [] {
        std::vector<Workload> loaded;
        for (const char* name : {"conversion_request", "linux_machine", "events", "connection_request"}) {
            loaded.push_back(LoadWorkload(name));
        }
        return loaded;
    }();
    return workloads;
}

const Workload& GetWorkload(const std::string& name) {
    const auto& workloads = GetWorkloads();
    return *std::find_if(
        workloads.begin(), workloads.end(), [&](const Workload& workload) { return workload.name == name; });
}

const Workload& MakeEvents(std::size_t count) {
    static std::deque<Workload> made;
    const auto& events = dynamic_cast<const EventArray&>(*GetWorkload("events").value);
    const auto array = Pellum::MakeRef<EventArray>();
    for (std::size_t i = 0; i < count; ++i) {
        const Pellum::Ref<Any> event(events.GetElement(i % events.GetLength())->_Clone());
        array->AppendChecked(event.Get());
    }
    return made.emplace_back(MakeWorkload("events", Pellum::Ref<Any>(array.Get())));
}

} // namespace Bench
