#pragma once

#include "bench/names.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "types/api/core/computer_spec.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Bench {

/// Goes over a list for ever.
template <class T>
class Endless {
public:
    explicit Endless(const std::vector<T>& items) : m_items(&items) {}

    const T& Next() {
        const T& item = (*m_items)[m_next];
        m_next = m_next + 1 == m_items->size() ? 0 : m_next + 1;
        return item;
    }

private:
    const std::vector<T>* m_items;
    std::size_t m_next = 0;
};

/// A property, as somebody looks for it.
struct PropertyName {
    const Tavik::DataObjectType* type;
    std::string name;
};

/// What is reached for. The names are in an order that has nothing to do with any table's.
struct AccessFixture {
    using Location = Morvane::ComputerSpec::LiveComputerLocation;

    Pellum::Ref<Location> location;
    const Tavik::DataObjectType* type;
    const Tavik::Property* hostname; ///< a string
    const Tavik::Property* port;     ///< an optional int
    std::vector<std::string> typeNames;
    std::vector<std::string> wireNames;
    std::vector<PropertyName> properties;
};

/// Lives until the process ends.
const AccessFixture& GetAccessFixture();

inline constexpr const char* kString = "a string";
inline constexpr const char* kOptionalInt = "an optional int";
inline constexpr const char* kAllTypes = "all types";
inline constexpr const char* kAllProperties = "all properties";

/// Tells `add(operation, what, body)` of the ways by which fields, types and properties are reached at run
/// time.
template <class Add>
void ForEachAccess(Add add) {
    const AccessFixture& fixture = GetAccessFixture();
    for (const auto& [what, property] :
         {std::pair(kString, fixture.hostname), {kOptionalInt, fixture.port}}) {
        const Tavik::Any* object = fixture.location.Get();
        add(kFieldPointer, what, [object, property = property]() mutable {
            benchmark::DoNotOptimize(object);
            return property->GetFieldPointer(object);
        });
        const Tavik::DataTypeInfo* info = &fixture.type->GetDataTypeInfo();
        add(kFieldRecord, what, [object, info, index = property->GetIndex()]() mutable {
            benchmark::DoNotOptimize(object);
            return info->fieldPointer(object, index);
        });
    }
    add(kFieldGet, kString,
        [object = static_cast<const Tavik::Any*>(fixture.location.Get()),
         property = fixture.hostname]() mutable {
            benchmark::DoNotOptimize(object);
            std::string out;
            property->Get(object, &out);
            return out;
        });
    add(kFieldGet, kOptionalInt,
        [object = static_cast<const Tavik::Any*>(fixture.location.Get()), property = fixture.port]() mutable {
            benchmark::DoNotOptimize(object);
            std::int32_t out = 0;
            property->Get(object, &out);
            return out;
        });
    Tavik::TypeRegistry* registry = &Tavik::TypeRegistry::Instance();
    add(kFindType, kAllTypes, [registry, names = Endless(fixture.typeNames)]() mutable {
        return registry->FindByName(names.Next());
    });
    add(kFindWireType, kAllTypes, [registry, names = Endless(fixture.wireNames)]() mutable {
        return registry->FindByWireName(names.Next());
    });
    add(kFindProperty, kAllProperties, [names = Endless(fixture.properties)]() mutable {
        const PropertyName& wanted = names.Next();
        return wanted.type->FindProperty(wanted.name);
    });
}

/// Registers the benchmarks of these, and of what one would do without the run time.
void AddAccess();

} // namespace Bench
