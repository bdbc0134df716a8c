#include "bench/proto/convert.h"
#include "bench/proto/fields.h"
#include "pellum/system/date_time.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/open_writer.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"
#include "tavik/value/text_values.h"

#include <google/protobuf/any.pb.h>
#include <google/protobuf/reflection.h>
#include <google/protobuf/timestamp.pb.h>
#include <google/protobuf/wrappers.pb.h>

#include <string>
#include <vector>

namespace Bench {

namespace {

using Tavik::TypeKind;
using AnyRef = Pellum::Ref<Tavik::Any>;

const Tavik::Type& FindType(const std::string& wireName) {
    const Tavik::Type* type = Tavik::TypeRegistry::Instance().FindByWireName(wireName);
    if (type == nullptr) {
        Refuse("no type is called", wireName);
    }
    return *type;
}

std::string TextField(const Pb::Message& message, const char* name) {
    return message.GetReflection()->GetString(message, &FieldOf(message, name));
}

Pellum::System::DateTime ReadTimestamp(const Pb::Message& message) {
    const auto& stamp = dynamic_cast<const Pb::Timestamp&>(message);
    return Pellum::System::DateTime::FromUtcTime(stamp.seconds() * 1'000'000 + stamp.nanos() / 1000);
}

Pb::RepeatedFieldRef<Pb::Message> ElementsOf(const Pb::Message& message, const Pb::FieldDescriptor& field) {
    return message.GetReflection()->GetRepeatedFieldRef<Pb::Message>(message, &field);
}

void WriteMember(Tavik::OpenContentWriter& writer, const Pb::Message& member);

void WriteOpenValue(Tavik::OpenContentWriter& writer, const Pb::Message& value) {
    const Pb::Reflection& access = *value.GetReflection();
    const Pb::FieldDescriptor* field =
        access.GetOneofFieldDescriptor(value, value.GetDescriptor()->oneof_decl(0));
    if (field == nullptr) {
        writer.Null();
    } else if (field->name() == "boolean") {
        writer.Boolean(access.GetBool(value, field));
    } else if (field->name() == "number") {
        writer.Number(access.GetString(value, field));
    } else if (field->name() == "text") {
        writer.String(access.GetString(value, field));
    } else if (field->name() == "array") {
        const Pb::Message& array = access.GetMessage(value, field);
        writer.BeginArray();
        for (const Pb::Message& item : ElementsOf(array, FieldOf(array, kItemsField))) {
            WriteOpenValue(writer, item);
        }
        writer.EndArray();
    } else {
        const Pb::Message& object = access.GetMessage(value, field);
        writer.BeginObject();
        for (const Pb::Message& member : ElementsOf(object, FieldOf(object, "members"))) {
            WriteMember(writer, member);
        }
        writer.EndObject();
    }
}

void WriteMember(Tavik::OpenContentWriter& writer, const Pb::Message& member) {
    const std::string name = TextField(member, "name");
    if (!writer.Name(name)) {
        Refuse("there are two members called", name);
    }
    WriteOpenValue(writer, member.GetReflection()->GetMessage(member, &FieldOf(member, "value")));
}

/// The value of a field, or of one element of it, as the plain type of a property; told to `use` by its
/// address.
template <class Use>
void ReadPlain(
    const Tavik::Type& type, const Pb::Message& message, const Pb::FieldDescriptor& field, int index,
    Use use) {
    const Pb::Reflection& access = *message.GetReflection();
    const bool isRepeated = field.is_repeated();
    const auto text = [&] {
        return isRepeated ? access.GetRepeatedString(message, &field, index)
                          : access.GetString(message, &field);
    };
    const auto number = [&] {
        return isRepeated ? access.GetRepeatedInt32(message, &field, index)
                          : access.GetInt32(message, &field);
    };
    const auto useValue = [&](const auto& value) { use(&value); };
    switch (type.GetKind()) {
    case TypeKind::Boolean:
        useValue(
            isRepeated ? access.GetRepeatedBool(message, &field, index) : access.GetBool(message, &field));
        break;
    case TypeKind::Byte: useValue(static_cast<signed char>(number())); break;
    case TypeKind::Int: useValue(number()); break;
    case TypeKind::Long:
        useValue(
            isRepeated ? access.GetRepeatedInt64(message, &field, index) : access.GetInt64(message, &field));
        break;
    case TypeKind::Float:
        useValue(
            isRepeated ? access.GetRepeatedFloat(message, &field, index) : access.GetFloat(message, &field));
        break;
    case TypeKind::Enum:
        useValue(
            isRepeated ? access.GetRepeatedEnumValue(message, &field, index)
                       : access.GetEnumValue(message, &field));
        break;
    case TypeKind::DateTime:
        useValue(ReadTimestamp(
            isRepeated ? access.GetRepeatedMessage(message, &field, index)
                       : access.GetMessage(message, &field)));
        break;
    case TypeKind::String: useValue(text()); break;
    case TypeKind::TypeName: useValue(Tavik::TypeName(text())); break;
    case TypeKind::PropertyPath: useValue(Tavik::PropertyPath(text())); break;
    case TypeKind::Binary: {
        const std::string bytes = text();
        useValue(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
        break;
    }
    default: Refuse("there is no plain value of", type.GetWireName());
    }
}

AnyRef ReadTyped(const Pb::Message& message) {
    const Tavik::Type& type = FindType(TextField(message, "type"));
    const std::string text = TextField(message, "text");
    switch (type.GetKind()) {
    case TypeKind::Byte:
        return AnyRef(new Tavik::Primitive<signed char>(static_cast<signed char>(std::stoi(text))));
    case TypeKind::TypeName: return AnyRef(new Tavik::Primitive<Tavik::TypeName>(Tavik::TypeName(text)));
    case TypeKind::PropertyPath:
        return AnyRef(new Tavik::Primitive<Tavik::PropertyPath>(Tavik::PropertyPath(text)));
    case TypeKind::Enum: {
        const std::int32_t value = dynamic_cast<const Tavik::EnumType&>(type).GetValue(text);
        return AnyRef(type.Box(&value));
    }
    default: Refuse("no text stands for a value of", type.GetWireName());
    }
}

template <class Wrapper>
auto WrappedValue(const Pb::Message& message) {
    return dynamic_cast<const Wrapper&>(message).value();
}

template <class T>
AnyRef Box(T value) {
    return AnyRef(new Tavik::Primitive<T>(std::move(value)));
}

AnyRef ReadArray(const Tavik::Type& element, const Pb::Message& message, const Pb::FieldDescriptor& field);

/// What may stand where the schema says nothing of the type.
AnyRef ReadAny(const Pb::Any& place) {
    const std::string& url = place.type_url();
    const std::string name = url.substr(url.rfind('/') + 1);
    const std::unique_ptr<Pb::Message> message(NewMessage(name));
    if (message == nullptr || !place.UnpackTo(message.get())) {
        Refuse("there is no message", name);
    }
    if (name == "google.protobuf.BoolValue") {
        return AnyRef(Tavik::PrimitiveFactory<bool>::Get(WrappedValue<Pb::BoolValue>(*message)));
    }
    if (name == "google.protobuf.Int32Value") {
        return Box<std::int32_t>(WrappedValue<Pb::Int32Value>(*message));
    }
    if (name == "google.protobuf.Int64Value") {
        return Box<std::int64_t>(WrappedValue<Pb::Int64Value>(*message));
    }
    if (name == "google.protobuf.FloatValue") {
        return Box<float>(WrappedValue<Pb::FloatValue>(*message));
    }
    if (name == "google.protobuf.StringValue") {
        return Box<std::string>(WrappedValue<Pb::StringValue>(*message));
    }
    if (name == "google.protobuf.BytesValue") {
        const std::string bytes = WrappedValue<Pb::BytesValue>(*message);
        return Box(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    }
    if (name == "google.protobuf.Timestamp") {
        return Box(ReadTimestamp(*message));
    }
    return FromProto(*message);
}

/// What stands where the schema has a place for it.
AnyRef ReadPlace(const Pb::Message& place) {
    if (const auto* any = dynamic_cast<const Pb::Any*>(&place)) {
        return ReadAny(*any);
    }
    if (!IsChoice(place)) {
        return FromProto(place);
    }
    const Pb::Reflection& access = *place.GetReflection();
    const Pb::FieldDescriptor* field =
        access.GetOneofFieldDescriptor(place, place.GetDescriptor()->oneof_decl(0));
    if (field == nullptr) {
        Refuse("there is nothing in", place.GetTypeName());
    }
    return FromProto(access.GetMessage(place, field));
}

AnyRef ReadArray(const Tavik::Type& element, const Pb::Message& message, const Pb::FieldDescriptor& field) {
    const Pb::Reflection& access = *message.GetReflection();
    AnyRef array(element.NewArray());
    if (auto* bytes = dynamic_cast<Tavik::Array<signed char>*>(array.Get());
        bytes != nullptr && !field.is_repeated()) {
        const std::string text = access.GetString(message, &field);
        bytes->GetElements().assign(text.begin(), text.end());
        return array;
    }
    auto* objects = dynamic_cast<Tavik::DataArrayBase*>(array.Get());
    auto* scalars = dynamic_cast<Tavik::ScalarArrayBase*>(array.Get());
    for (int i = 0; i < access.FieldSize(message, &field); ++i) {
        const bool isMessage = field.cpp_type() == Pb::FieldDescriptor::CPPTYPE_MESSAGE
                            && element.GetKind() != TypeKind::DateTime;
        if (!isMessage) {
            ReadPlain(element, message, field, i, [&](const void* value) { scalars->_Append(value); });
            continue;
        }
        const AnyRef value = ReadPlace(access.GetRepeatedMessage(message, &field, i));
        if (objects != nullptr) {
            objects->AppendChecked(value.Get());
        } else if (element.GetKind() == TypeKind::Any || element.GetKind() == TypeKind::Managed) {
            scalars->_Append(value.Get());
        } else {
            scalars->_Append(dynamic_cast<const Tavik::PrimitiveBase&>(*value)._GetValuePointer());
        }
    }
    return array;
}

void ReadProperty(const Pb::Message& message, Tavik::DataObject& object, const Tavik::Property& property) {
    const Pb::FieldDescriptor& field = FieldOf(message, property);
    const Pb::Reflection& access = *message.GetReflection();
    if (property.IsArray()) {
        const bool isSet = field.is_repeated() ? access.FieldSize(message, &field) != 0
                                               : !access.GetString(message, &field).empty();
        if (isSet) {
            property.Set(&object, ReadArray(*property.GetType(), message, field).Get());
        }
    } else if (field.has_presence() && !access.HasField(message, &field)) {
        return;
    } else if (property.IsCounted()) {
        property.Set(&object, ReadPlace(access.GetMessage(message, &field)).Get());
    } else {
        ReadPlain(
            *property.GetType(), message, field, 0, [&](const void* value) { property.Set(&object, value); });
    }
}

void ReadObject(const Pb::Message& message, Tavik::DataObject& object, const Tavik::DataObjectType& type) {
    const Pb::Descriptor& descriptor = *message.GetDescriptor();
    const Pb::Reflection& access = *message.GetReflection();
    if (const Pb::FieldDescriptor* base = descriptor.FindFieldByNumber(kBaseNumber)) {
        ReadObject(access.GetMessage(message, base), object, *type.GetBaseType());
    }
    const Pb::FieldDescriptor* content = descriptor.FindFieldByName(kContentField);
    if (type.IsDeclaredOpen() && content != nullptr) {
        Tavik::OpenContentWriter writer(*type.GetOpenContent(object));
        for (const Pb::Message& member : ElementsOf(message, *content)) {
            WriteMember(writer, member);
        }
    }
    for (const Tavik::Property& property : type.GetOwnProperties()) {
        ReadProperty(message, object, property);
    }
}

} // namespace

AnyRef FromProto(const Pb::Message& message) {
    const std::string name = message.GetDescriptor()->name();
    if (name == "ManagedObjectReference") {
        const Tavik::TypeInfo& type = FindType(TextField(message, "type")).GetInfo();
        return AnyRef(new Tavik::MoRef(&type, TextField(message, "id")));
    }
    if (name == "TypedText") {
        return ReadTyped(message);
    }
    if (name == "TypedArray") {
        return ReadArray(FindType(TextField(message, "type")), message, FieldOf(message, kItemsField));
    }
    if (message.GetTypeName().starts_with(kRootsPackage)) {
        const Tavik::Type& element = FindType(name.substr(0, name.size() - kArraySuffix.size()));
        return ReadArray(element, message, FieldOf(message, kItemsField));
    }
    const auto& type = dynamic_cast<const Tavik::DataObjectType&>(FindType(name));
    AnyRef object(type.New());
    ReadObject(message, static_cast<Tavik::DataObject&>(*object), type);
    return object;
}

} // namespace Bench
