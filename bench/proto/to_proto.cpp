#include "bench/proto/convert.h"
#include "bench/proto/fields.h"
#include "pellum/system/date_time.h"
#include "tavik/type/enum_type.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/open_content.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"
#include "tavik/value/text_values.h"

#include <google/protobuf/any.pb.h>
#include <google/protobuf/timestamp.pb.h>
#include <google/protobuf/wrappers.pb.h>

#include <string>
#include <vector>

namespace Bench {

namespace {

using Tavik::TypeKind;

constexpr std::int64_t kMicros = 1'000'000;

template <class T>
const T& As(const void* value) {
    return *static_cast<const T*>(value);
}

std::int32_t EnumValue(const void* value) {
    return As<std::int32_t>(value);
}

void FillObject(Pb::Message& message, const Tavik::DataObject& object, const Tavik::DataObjectType& type);
void PackAny(Pb::Any& place, const Tavik::Any& value);

void FillTimestamp(Pb::Timestamp& stamp, Pellum::System::DateTime time) {
    const std::int64_t micros = time.GetUtcTime();
    const std::int64_t rest = (micros % kMicros + kMicros) % kMicros;
    stamp.set_seconds((micros - rest) / kMicros);
    stamp.set_nanos(static_cast<std::int32_t>(rest * 1000));
}

/// Sets a field, or adds to one that is repeated.
class FieldFiller {
public:
    FieldFiller(Pb::Message& message, const Pb::FieldDescriptor& field)
        : m_message(message), m_access(*message.GetReflection()), m_field(field) {}

    void Fill(const Tavik::Type& type, const void* value) const {
        switch (type.GetKind()) {
        case TypeKind::Boolean:
            Put(&Pb::Reflection::SetBool, &Pb::Reflection::AddBool, As<bool>(value));
            break;
        case TypeKind::Byte:
            Put(&Pb::Reflection::SetInt32, &Pb::Reflection::AddInt32, As<signed char>(value));
            break;
        case TypeKind::Int:
            Put(&Pb::Reflection::SetInt32, &Pb::Reflection::AddInt32, As<std::int32_t>(value));
            break;
        case TypeKind::Long:
            Put(&Pb::Reflection::SetInt64, &Pb::Reflection::AddInt64, As<std::int64_t>(value));
            break;
        case TypeKind::Float:
            Put(&Pb::Reflection::SetFloat, &Pb::Reflection::AddFloat, As<float>(value));
            break;
        case TypeKind::Enum:
            Put(&Pb::Reflection::SetEnumValue, &Pb::Reflection::AddEnumValue, EnumValue(value));
            break;
        case TypeKind::DateTime:
            FillTimestamp(dynamic_cast<Pb::Timestamp&>(Message()), As<Pellum::System::DateTime>(value));
            break;
        default: Put(&Pb::Reflection::SetString, &Pb::Reflection::AddString, Text(type, value)); break;
        }
    }

    /// The message of a field, a new one where it is repeated.
    Pb::Message& Message() const {
        return m_field.is_repeated() ? *m_access.AddMessage(&m_message, &m_field)
                                     : *m_access.MutableMessage(&m_message, &m_field);
    }

    /// Text or bytes of what is a string in protobuf.
    static std::string Text(const Tavik::Type& type, const void* value) {
        switch (type.GetKind()) {
        case TypeKind::String: return As<std::string>(value);
        case TypeKind::TypeName: return As<Tavik::TypeName>(value).GetText();
        case TypeKind::PropertyPath: return As<Tavik::PropertyPath>(value).GetText();
        case TypeKind::Binary: {
            const auto& bytes = As<std::vector<std::uint8_t>>(value);
            return {bytes.begin(), bytes.end()};
        }
        default: Refuse("no text stands for a value of", type.GetWireName());
        }
    }

private:
    template <class Set, class Add, class Value>
    void Put(Set set, Add add, const Value& value) const {
        if (m_field.is_repeated()) {
            (m_access.*add)(&m_message, &m_field, value);
        } else {
            (m_access.*set)(&m_message, &m_field, value);
        }
    }

    Pb::Message& m_message;
    const Pb::Reflection& m_access;
    const Pb::FieldDescriptor& m_field;
};

void AddMember(const FieldFiller& members, const Tavik::OpenItem& item);

void FillOpenValue(Pb::Message& message, const Tavik::OpenValue& value) {
    const Pb::Reflection& access = *message.GetReflection();
    const std::string text(value.GetText());
    switch (value.GetKind()) {
    case Tavik::OpenKind::Null: break;
    case Tavik::OpenKind::Boolean:
        access.SetBool(&message, &FieldOf(message, "boolean"), text == "true");
        break;
    case Tavik::OpenKind::Number: access.SetString(&message, &FieldOf(message, "number"), text); break;
    case Tavik::OpenKind::String: access.SetString(&message, &FieldOf(message, "text"), text); break;
    case Tavik::OpenKind::Array: {
        Pb::Message& array = FieldFiller(message, FieldOf(message, "array")).Message();
        for (const Tavik::OpenItem& item : value.GetItems()) {
            FillOpenValue(FieldFiller(array, FieldOf(array, kItemsField)).Message(), item.value);
        }
        break;
    }
    case Tavik::OpenKind::Object: {
        Pb::Message& object = FieldFiller(message, FieldOf(message, "object")).Message();
        for (const Tavik::OpenItem& item : value.GetItems()) {
            AddMember(FieldFiller(object, FieldOf(object, "members")), item);
        }
        break;
    }
    }
}

void AddMember(const FieldFiller& members, const Tavik::OpenItem& item) {
    Pb::Message& member = members.Message();
    member.GetReflection()->SetString(&member, &FieldOf(member, "name"), std::string(item.name));
    FillOpenValue(FieldFiller(member, FieldOf(member, "value")).Message(), item.value);
}

void FillReference(Pb::Message& message, const Tavik::MoRef& reference) {
    const Pb::Reflection& access = *message.GetReflection();
    access.SetString(&message, &FieldOf(message, "type"), reference.GetTypeInfo().wireName);
    access.SetString(&message, &FieldOf(message, "id"), reference.GetId());
}

/// Puts an object or reference where the schema has a place for it.
void FillPlace(Pb::Message& place, const Tavik::Any& value) {
    if (auto* any = dynamic_cast<Pb::Any*>(&place)) {
        PackAny(*any, value);
    } else if (const auto* reference = dynamic_cast<const Tavik::MoRef*>(&value)) {
        FillReference(place, *reference);
    } else {
        const auto& object = dynamic_cast<const Tavik::DataObject&>(value);
        const Tavik::DataObjectType& type = *object._GetDataType();
        Pb::Message* target = &place;
        if (IsChoice(place)) {
            const Pb::Descriptor& choice = *place.GetDescriptor();
            target = nullptr;
            for (int i = 0; i < choice.field_count() && target == nullptr; ++i) {
                if (choice.field(i)->message_type()->name() == type.GetWireName()) {
                    target = place.GetReflection()->MutableMessage(&place, choice.field(i));
                }
            }
        }
        if (target == nullptr || target->GetDescriptor()->name() != type.GetWireName()) {
            Refuse(std::string("there is no place for ") + type.GetWireName() + " in", place.GetTypeName());
        }
        FillObject(*target, object, type);
    }
}

void FillArray(Pb::Message& message, const Pb::FieldDescriptor& field, const Tavik::ArrayBase& array) {
    const FieldFiller filler(message, field);
    if (const auto* bytes = dynamic_cast<const Tavik::Array<signed char>*>(&array)) {
        const auto& elements = bytes->GetElements();
        message.GetReflection()->SetString(&message, &field, std::string(elements.begin(), elements.end()));
    } else if (const auto* objects = dynamic_cast<const Tavik::DataArrayBase*>(&array)) {
        for (std::size_t i = 0; i < objects->GetLength(); ++i) {
            FillPlace(filler.Message(), *objects->GetElement(i));
        }
    } else {
        const auto& scalars = dynamic_cast<const Tavik::ScalarArrayBase&>(array);
        const Tavik::Type& type = *array._GetElementType();
        for (std::size_t i = 0; i < scalars.GetLength(); ++i) {
            const void* element = scalars._GetElementPointer(i);
            if (type.GetKind() == TypeKind::Any || type.GetKind() == TypeKind::Managed) {
                FillPlace(filler.Message(), *static_cast<const Tavik::Any*>(element));
            } else {
                filler.Fill(type, element);
            }
        }
    }
}

void FillProperty(Pb::Message& message, const Tavik::DataObject& object, const Tavik::Property& property) {
    if (!property.IsSet(&object)) {
        return;
    }
    const Pb::FieldDescriptor& field = FieldOf(message, property);
    if (property.IsArray()) {
        FillArray(message, field, dynamic_cast<const Tavik::ArrayBase&>(*property.GetCounted(&object)));
    } else if (property.IsCounted()) {
        FillPlace(FieldFiller(message, field).Message(), *property.GetCounted(&object));
    } else {
        FieldFiller(message, field).Fill(*property.GetType(), property.GetFieldPointer(&object));
    }
}

void FillObject(Pb::Message& message, const Tavik::DataObject& object, const Tavik::DataObjectType& type) {
    if (const Pb::FieldDescriptor* base = message.GetDescriptor()->FindFieldByNumber(kBaseNumber)) {
        FillObject(FieldFiller(message, *base).Message(), object, *type.GetBaseType());
    }
    const Pb::FieldDescriptor* content = message.GetDescriptor()->FindFieldByName(kContentField);
    if (type.IsDeclaredOpen() && content != nullptr) {
        for (const Tavik::OpenItem& item : *type.GetOpenContent(object)) {
            AddMember(FieldFiller(message, *content), item);
        }
    }
    for (const Tavik::Property& property : type.GetOwnProperties()) {
        FillProperty(message, object, property);
    }
}

template <class Wrapper, class Value>
std::unique_ptr<Pb::Message> MakeWrapper(const Value& value) {
    auto wrapper = std::make_unique<Wrapper>();
    wrapper->set_value(value);
    return wrapper;
}

std::unique_ptr<Pb::Message> WrapTyped(const Tavik::Type& type, const std::string& text) {
    std::unique_ptr<Pb::Message> message(NewMessage(std::string(kTypesPackage) + "TypedText"));
    message->GetReflection()->SetString(message.get(), &FieldOf(*message, "type"), type.GetWireName());
    message->GetReflection()->SetString(message.get(), &FieldOf(*message, "text"), text);
    return message;
}

std::unique_ptr<Pb::Message> WrapScalar(const Tavik::Type& type, const void* value) {
    switch (type.GetKind()) {
    case TypeKind::Boolean: return MakeWrapper<Pb::BoolValue>(As<bool>(value));
    case TypeKind::Int: return MakeWrapper<Pb::Int32Value>(As<std::int32_t>(value));
    case TypeKind::Long: return MakeWrapper<Pb::Int64Value>(As<std::int64_t>(value));
    case TypeKind::Float: return MakeWrapper<Pb::FloatValue>(As<float>(value));
    case TypeKind::String: return MakeWrapper<Pb::StringValue>(As<std::string>(value));
    case TypeKind::Binary: return MakeWrapper<Pb::BytesValue>(FieldFiller::Text(type, value));
    case TypeKind::DateTime: {
        auto stamp = std::make_unique<Pb::Timestamp>();
        FillTimestamp(*stamp, As<Pellum::System::DateTime>(value));
        return stamp;
    }
    case TypeKind::Byte: return WrapTyped(type, std::to_string(As<signed char>(value)));
    case TypeKind::Enum:
        return WrapTyped(type, static_cast<const Tavik::EnumType&>(type).GetTag(EnumValue(value)));
    default: return WrapTyped(type, FieldFiller::Text(type, value));
    }
}

std::unique_ptr<Pb::Message> WrapArray(const Tavik::ArrayBase& array) {
    std::unique_ptr<Pb::Message> message(NewMessage(std::string(kTypesPackage) + "TypedArray"));
    const Tavik::Type& type = *array._GetElementType();
    message->GetReflection()->SetString(message.get(), &FieldOf(*message, "type"), type.GetWireName());
    const FieldFiller items(*message, FieldOf(*message, kItemsField));
    const auto* objects = dynamic_cast<const Tavik::DataArrayBase*>(&array);
    for (std::size_t i = 0; i < array.GetLength(); ++i) {
        auto& item = dynamic_cast<Pb::Any&>(items.Message());
        if (objects != nullptr) {
            PackAny(item, *objects->GetElement(i));
            continue;
        }
        const void* element = dynamic_cast<const Tavik::ScalarArrayBase&>(array)._GetElementPointer(i);
        if (type.GetKind() == TypeKind::Any || type.GetKind() == TypeKind::Managed) {
            PackAny(item, *static_cast<const Tavik::Any*>(element));
        } else {
            item.PackFrom(*WrapScalar(type, element));
        }
    }
    return message;
}

/// A value that is no object, in a message for it.
std::unique_ptr<Pb::Message> Wrap(const Tavik::Any& value) {
    if (const auto* array = dynamic_cast<const Tavik::ArrayBase*>(&value)) {
        return WrapArray(*array);
    }
    if (const auto* reference = dynamic_cast<const Tavik::MoRef*>(&value)) {
        std::unique_ptr<Pb::Message> message(
            NewMessage(std::string(kTypesPackage) + "ManagedObjectReference"));
        FillReference(*message, *reference);
        return message;
    }
    return WrapScalar(*value._GetType(), dynamic_cast<const Tavik::PrimitiveBase&>(value)._GetValuePointer());
}

void PackAny(Pb::Any& place, const Tavik::Any& value) {
    const bool isObject = dynamic_cast<const Tavik::DataObject*>(&value) != nullptr;
    place.PackFrom(isObject ? *ToProto(value) : *Wrap(value));
}

} // namespace

std::unique_ptr<Pb::Message> ToProto(const Tavik::Any& value) {
    if (const auto* array = dynamic_cast<const Tavik::ArrayBase*>(&value)) {
        std::unique_ptr<Pb::Message> message(NewMessage(
            kRootsPackage + std::string(array->_GetElementType()->GetWireName())
            + std::string(kArraySuffix)));
        if (message == nullptr) {
            return WrapArray(*array);
        }
        FillArray(*message, FieldOf(*message, kItemsField), *array);
        return message;
    }
    const auto* object = dynamic_cast<const Tavik::DataObject*>(&value);
    if (object == nullptr) {
        return Wrap(value);
    }
    const Tavik::DataObjectType& type = *object->_GetDataType();
    std::unique_ptr<Pb::Message> message(NewMessage(kTypesPackage + std::string(type.GetWireName())));
    if (message == nullptr) {
        Refuse("there is no message for", type.GetWireName());
    }
    FillObject(*message, *object, type);
    return message;
}

} // namespace Bench
