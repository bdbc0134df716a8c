#include "tavik/type/data_object_type.h"

#include "pellum/error/fail_fast.h"
#include "tavik/type/descriptor_rows.h"
#include "tavik/type/name_marks.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "tavik/value/array_base.h"
#include "tavik/value/json_text.h"
#include "tavik/value/text_buffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>

namespace Tavik {

namespace {

bool IsCountedKind(TypeKind kind) {
    return kind == TypeKind::Data || kind == TypeKind::Fault || kind == TypeKind::Managed
        || kind == TypeKind::Any;
}

/// On its own, as what copies values of any form takes room on the stack, which plain ones would pay for.
[[gnu::noinline]] void* CopyValue(FieldForm form, const void* member, void* out) {
    WithStorage(form, [&](auto storage) { storage.Get(member, out); });
    return out;
}

constexpr std::string_view kBehindKey = ": ";

/// The key texts of properties, each ended by a null character, which is in none of them. Those of names that
/// are no UTF-8 text have nothing behind the key.
std::string WriteKeyTexts(std::span<const PropertyDescriptor> rows) {
    std::string texts;
    {
        TextBuffer out(texts);
        for (const PropertyDescriptor& row : rows) {
            out.Append(", ");
            if (AppendQuoted(out, row.name)) {
                out.Append(kBehindKey);
            }
            out.Append('\0');
        }
    }
    return texts;
}

} // namespace

bool Property::IsPartOf(const Version& version) const {
    return m_version == nullptr || version.Includes(*m_version);
}

bool Property::IsSetByRecord(const Any* object) const {
    return m_owner->GetDataTypeInfo().isSet(object, m_index);
}

const void* Property::GetFieldPointerByRecord(const Any* object) const {
    return m_owner->GetDataTypeInfo().fieldPointer(object, m_index);
}

void* Property::Get(const Any* object, void* out) const {
    const void* member = GetMember(object, m_layout);
    // Plain values first, so that they cost next to nothing.
    switch (m_layout.form) {
    case FieldForm::Byte:
    case FieldForm::OptionalByte: std::memcpy(out, member, 1); break;
    case FieldForm::Int:
    case FieldForm::OptionalInt: std::memcpy(out, member, sizeof(std::int32_t)); break;
    case FieldForm::Long:
    case FieldForm::OptionalLong: std::memcpy(out, member, sizeof(std::int64_t)); break;
    case FieldForm::Unknown: return m_owner->GetDataTypeInfo().get(object, m_index, out);
    default: return CopyValue(m_layout.form, member, out);
    }
    return out;
}

void Property::Set(Any* object, const void* in) const {
    m_owner->GetDataTypeInfo().set(object, m_index, in);
}

void Property::Reset(Any* object) const {
    const ResetFunction reset = m_owner->GetDataTypeInfo().reset;
    if (reset == nullptr) {
        Pellum::FailFast(Pellum::kBadPropertyIndex);
    }
    reset(object, m_index);
}

DataObjectType::DataObjectType(const DataTypeInfo* info, const DataTypeTraits& traits)
    : Type(info->type),
      m_dataInfo(info),
      m_layout(traits.layout),
      m_content(traits.content),
      m_httpStatus(traits.httpStatus != 0 ? Pellum::Http::ResponseCode::Find(traits.httpStatus) : nullptr),
      m_isDeclaredOpen(traits.content != nullptr) {
    static_assert(std::is_trivially_destructible_v<Property>); // so that freeing their memory is enough
}

DataObjectType::~DataObjectType() = default;

void DataObjectType::Resolve(TypeRegistry& registry) {
    if (m_resolved) {
        return;
    }
    m_resolved = true;
    if (m_dataInfo->base != nullptr) {
        const Type* base = registry.FindLoading(m_dataInfo->base);
        if (base == nullptr || (base->GetKind() != TypeKind::Data && base->GetKind() != TypeKind::Fault)) {
            registry.ReportError(
                std::string("base ") + m_dataInfo->base->name + " of type " + GetName()
                + " is not a registered data type");
        } else {
            auto* dataBase = const_cast<DataObjectType*>(static_cast<const DataObjectType*>(base));
            dataBase->Resolve(registry);
            if (dataBase->IsA(this)) {
                registry.ReportError(std::string("type ") + GetName() + " is derived from itself");
            } else {
                m_base = dataBase;
                m_content = m_content != nullptr ? m_content : dataBase->m_content;
                m_httpStatus = m_httpStatus != nullptr ? m_httpStatus : dataBase->m_httpStatus;
            }
        }
    }
    AddOwnProperties(registry);
}

void DataObjectType::AddOwnProperties(TypeRegistry& registry) {
    if (m_base != nullptr) {
        m_all = m_base->m_all;
        m_marks = m_base->m_marks;
    }
    const std::span<const PropertyDescriptor> rows = GetRows(m_dataInfo->properties);
    if (rows.empty()) {
        return;
    }
    const std::string keyTexts = WriteKeyTexts(rows);
    const std::size_t total = m_all.size() + rows.size();
    m_memory = std::make_unique_for_overwrite<std::byte[]>(
        rows.size() * sizeof(Property) + total * (sizeof(void*) + sizeof(char)) + keyTexts.size());
    auto* const own = reinterpret_cast<Property*>(m_memory.get());
    auto** const all = reinterpret_cast<const Property**>(own + rows.size());
    auto* const marks = reinterpret_cast<char*>(all + total);
    auto* keyText = marks + total;
    keyTexts.copy(keyText, keyTexts.size());

    const Property** nextOfAll = std::copy(m_all.begin(), m_all.end(), all);
    char* nextMark = std::copy(m_marks.begin(), m_marks.end(), marks);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Property& property = *::new (own + i) Property();
        property.m_descriptor = &rows[i];
        const std::string_view text = keyText;
        keyText += text.size() + 1;
        FillProperty(
            property, static_cast<int>(i), text.ends_with(kBehindKey) ? text : std::string_view(), registry);
        *nextOfAll++ = &property;
        *nextMark++ = NameMarks::Get(property.m_name);
    }
    m_own = {own, rows.size()};
    m_all = {all, total};
    m_marks = {marks, total};
}

void DataObjectType::FillProperty(
    Property& property, int index, std::string_view keyText, TypeRegistry& registry) const {
    const PropertyDescriptor& row = *property.m_descriptor;
    property.m_name = row.name;
    property.m_keyText = keyText;
    property.m_owner = this;
    property.m_index = index;
    if (m_layout != nullptr && index < m_layout->count) {
        property.m_layout = m_layout->fields[index];
    }
    property.m_type = registry.FindLoading(row.type);
    property.m_version = registry.FindLoadingVersion(row.version);
    if (property.m_type == nullptr) {
        registry.ReportError(
            std::string("type ") + (row.type != nullptr ? row.type->name : "(none)") + " of property "
            + row.name + " of " + GetName() + " is not registered");
    }
    property.m_counted = row.IsArray() || (row.type != nullptr && IsCountedKind(row.type->kind));
}

const Property* DataObjectType::FindProperty(std::string_view name) const {
    const std::size_t position =
        NameMarks::Find(m_marks, name, [&](std::size_t at) { return m_all[at]->GetNameText() == name; });
    return position == NameMarks::kNone ? nullptr : m_all[position];
}

std::size_t DataObjectType::GetPosition(const Property& property) const {
    return static_cast<std::size_t>(std::find(m_all.begin(), m_all.end(), &property) - m_all.begin());
}

OpenContent* DataObjectType::GetOpenContent(DataObject& object) const {
    return m_content != nullptr ? m_content(&object) : nullptr;
}

const OpenContent* DataObjectType::GetOpenContent(const DataObject& object) const {
    return GetOpenContent(const_cast<DataObject&>(object));
}

const Pellum::Http::ResponseCode::Info& DataObjectType::GetHttpStatus() const {
    return m_httpStatus != nullptr ? *m_httpStatus : Pellum::Http::ResponseCode::kInternalServerError;
}

DataObject* DataObjectType::New() const {
    return m_dataInfo->create();
}

ArrayBase* DataObjectType::NewArray() const {
    return m_dataInfo->createArray();
}

DataObjectType* CreateDataObjectType(const DataTypeInfo* info) {
    return new DataObjectType(info);
}

DataObjectType* CreateDataObjectType(const DataTypeInfo* info, const DataTypeTraits& traits) {
    return new DataObjectType(info, traits);
}

} // namespace Tavik
