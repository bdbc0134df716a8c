#include "tests/catalogue/document.h"

#include "pellum/system/date_time.h"
#include "tavik/type/enum_type.h"
#include "tavik/value/json_text.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/primitive.h"
#include "tavik/value/print.h"
#include "tavik/value/scalar_array.h"
#include "tests/catalogue/catalogue.h"
#include "tests/support/plain_value.h"

#include <cstdint>

namespace CatalogueTests {

namespace {

using Tavik::TypeKind;

std::string Join(const Members& members, std::string_view separator) {
    std::string text;
    for (const Member& member : members) {
        text += (text.empty() ? "" : std::string(separator)) + Quoted(member.first) + ": " + member.second;
    }
    return text;
}

std::string Base64(const void* bytes, std::size_t size) {
    std::string text;
    Tavik::AppendBase64(text, bytes, size);
    return text;
}

} // namespace

std::string Quoted(std::string_view text) {
    std::string quoted;
    EXPECT_TRUE(Tavik::AppendQuoted(quoted, text));
    return quoted;
}

std::string WriteLines(const Tavik::DataObjectType& type, const Members& members) {
    Members all{{"$type", Quoted(type.GetWireName())}};
    all.insert(all.end(), members.begin(), members.end());
    return "{\n" + Join(all, ",\n") + "\n}";
}

std::string ExpectedDocument::Write(const Tavik::DataObject& object) {
    return WriteObject(object, nullptr, "");
}

Members ExpectedDocument::WriteMembers(const Tavik::DataObject& object, const std::string& path) {
    Members members;
    for (const Tavik::Property* property : object._GetDataType()->GetProperties()) {
        const Tavik::PropertyDescriptor& row = property->GetDescriptor();
        const void* field = property->GetFieldPointer(&object);
        if (field == nullptr || (m_options.version && !Has(*m_options.version, row.version))) {
            continue;
        }
        const std::string place = path + (path.empty() ? "" : ".") + row.name;
        std::string text;
        if ((row.flags & Tavik::kSecretFlag) != 0 && !m_options.showSecrets) {
            text = "\"***\"";
        } else if (property->IsCounted()) {
            text = WriteValue(*static_cast<const Tavik::Any*>(field), property->GetType(), place);
        } else {
            text = WritePlain(*property->GetType(), field, place);
        }
        members.emplace_back(row.name, text);
    }
    return members;
}

std::string ExpectedDocument::WriteObject(
    const Tavik::DataObject& object, const Tavik::Type* declared, const std::string& path) {
    const Tavik::DataObjectType& type = *object._GetDataType();
    CheckVersion(type.GetInfo(), path);
    if (!m_refusedType.empty()) {
        return {};
    }
    if (type.IsOpen()) {
        // Only the object itself knows what it carries.
        Tavik::PrintOptions options;
        options.showSecrets = m_options.showSecrets;
        options.version = m_options.version ? &GetVersion(*m_options.version) : nullptr;
        options.declaredType = declared;
        return Tavik::Print(&object, options);
    }
    Members members = WriteMembers(object, path);
    if (declared != &type) {
        members.insert(members.begin(), {"$type", Quoted(type.GetWireName())});
    }
    return '{' + Join(members, ", ") + '}';
}

std::string ExpectedDocument::WriteValue(
    const Tavik::Any& value, const Tavik::Type* declared, const std::string& path) {
    if (const auto* object = dynamic_cast<const Tavik::DataObject*>(&value)) {
        return WriteObject(*object, declared, path);
    }
    if (const auto* array = dynamic_cast<const Tavik::ArrayBase*>(&value)) {
        return WriteArray(*array, path);
    }
    if (const auto* reference = dynamic_cast<const Tavik::MoRef*>(&value)) {
        CheckVersion(reference->GetTypeInfo(), path);
        return '{'
             + Join(
                   {{"mo", Quoted(reference->GetTypeInfo().wireName)}, {"id", Quoted(reference->GetId())}},
                   ", ")
             + '}';
    }
    const Tavik::Type& type = *value._GetType();
    const void* plain = static_cast<const Tavik::PrimitiveBase&>(value)._GetValuePointer();
    return '{' + Join({{"$type", Quoted(type.GetWireName())}, {"value", WritePlain(type, plain, path)}}, ", ")
         + '}';
}

std::string ExpectedDocument::WriteArray(const Tavik::ArrayBase& array, const std::string& path) {
    const auto* scalars = dynamic_cast<const Tavik::ScalarArrayBase*>(&array);
    const Tavik::Type& type = *array._GetElementType();
    if (type.GetKind() == TypeKind::Byte) {
        return Base64(scalars->_GetElementPointer(0), array.GetLength());
    }
    std::string text;
    for (std::size_t i = 0; i < array.GetLength(); ++i) {
        const std::string place = path + '[' + std::to_string(i) + ']';
        text += i == 0 ? "" : ", ";
        if (scalars == nullptr) {
            text += WriteObject(*static_cast<const Tavik::DataArrayBase&>(array).GetElement(i), &type, place);
        } else if (type.GetKind() == TypeKind::Any || type.GetKind() == TypeKind::Managed) {
            text += WriteValue(*static_cast<const Tavik::Any*>(scalars->_GetElementPointer(i)), &type, place);
        } else {
            text += WritePlain(type, scalars->_GetElementPointer(i), place);
        }
    }
    return '[' + text + ']';
}

std::string ExpectedDocument::WritePlain(
    const Tavik::Type& type, const void* value, const std::string& path) {
    CheckVersion(type.GetInfo(), path);
    std::string text;
    TestSupport::WithPlainType(type.GetKind(), [&]<class T>(std::type_identity<T>) {
        const T& plain = *static_cast<const T*>(value);
        if constexpr (std::is_same_v<T, bool>) {
            text = plain ? "true" : "false";
        } else if constexpr (std::is_floating_point_v<T>) {
            EXPECT_TRUE(Tavik::AppendFloat(text, plain));
        } else if constexpr (std::is_integral_v<T>) {
            const auto* enumeration = dynamic_cast<const Tavik::EnumType*>(&type);
            text = enumeration == nullptr ? std::to_string(plain)
                                          : Quoted(enumeration->GetEnumTypeInfo().values[plain]);
        } else if constexpr (std::is_same_v<T, std::string>) {
            text = Quoted(plain);
        } else if constexpr (std::is_same_v<T, Pellum::System::DateTime>) {
            text = Quoted(plain.ToString());
        } else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>) {
            text = Base64(plain.data(), plain.size());
        } else {
            text = Quoted(plain.GetText());
        }
    });
    return text;
}

void ExpectedDocument::CheckVersion(const Tavik::TypeInfo& type, const std::string& path) {
    const bool isOld = type.version == nullptr || !m_options.version || Has(*m_options.version, type.version);
    if (!isOld && m_refusedType.empty()) {
        m_refusedPath = path;
        m_refusedType = type.name;
    }
}

} // namespace CatalogueTests
