#include "tavik/type/data_object_type.h"

#include "pellum/error/fail_fast.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "tavik/value/array_base.h"
#include "tavik/value/json_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

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
      m_isDeclaredOpen(traits.content != nullptr),
      m_httpStatus(traits.httpStatus != 0 ? Pellum::Http::ResponseCode::Find(traits.httpStatus) : nullptr) {}

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
    const PropertyDescriptor* const rows = m_dataInfo->properties;
    std::size_t count = 0;
    while (rows != nullptr && rows[count].name != nullptr) {
        ++count;
    }
    if (m_base != nullptr) {
        m_names = m_base->m_names;
        m_all.reserve(m_base->m_all.size() + count);
        m_all = m_base->m_all;
    }
    if (count == 0) {
        return;
    }
    m_own.reserve(count);
    m_all.reserve(m_all.size() + count);
    for (std::size_t i = 0; i < count; ++i) {
        const PropertyDescriptor& row = rows[i];
        Property& property = m_own.emplace_back();
        property.m_descriptor = &row;
        property.m_name = row.name;
        property.m_owner = this;
        property.m_index = static_cast<int>(i);
        if (m_layout != nullptr && property.m_index < m_layout->count) {
            property.m_layout = m_layout->fields[i];
        }
        property.m_type = registry.FindLoading(row.type);
        property.m_version = registry.FindLoadingVersion(row.version);
        if (property.m_type == nullptr) {
            registry.ReportError(
                std::string("type ") + (row.type != nullptr ? row.type->name : "(none)") + " of property "
                + row.name + " of " + GetName() + " is not registered");
        }
        property.m_counted = row.IsArray() || (row.type != nullptr && IsCountedKind(row.type->kind));
        m_all.push_back(&property);
        m_names.Add(property.m_name);
    }
    WriteKeyTexts();
}

void DataObjectType::WriteKeyTexts() {
    constexpr std::string_view kBefore = ", ";
    constexpr std::string_view kBehind = ": ";
    std::size_t size = 0;
    for (const Property& property : m_own) {
        size += property.m_name.size() + kBefore.size() + kBehind.size() + 2; // with quotes
    }
    m_keyTexts.reserve(size);
    std::vector<std::size_t> ends;
    ends.reserve(m_own.size());
    for (const Property& property : m_own) {
        const std::size_t begin = m_keyTexts.size();
        m_keyTexts += kBefore;
        if (AppendQuoted(m_keyTexts, property.m_name)) {
            m_keyTexts += kBehind;
        } else {
            m_keyTexts.resize(begin);
        }
        ends.push_back(m_keyTexts.size());
    }
    std::size_t begin = 0;
    for (std::size_t i = 0; i < ends.size(); begin = ends[i++]) {
        m_own[i].m_keyText = std::string_view(m_keyTexts).substr(begin, ends[i] - begin);
    }
}

const Property* DataObjectType::FindProperty(std::string_view name) const {
    const std::size_t position =
        m_names.Find(name, [&](std::size_t at) { return m_all[at]->GetNameText() == name; });
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
