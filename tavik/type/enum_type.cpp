#include "tavik/type/enum_type.h"

#include "pellum/error/exception.h"
#include "tavik/type/name_marks.h"
#include "tavik/value/array_base.h"

#include <cstring>

namespace Tavik {

EnumType::EnumType(const EnumTypeInfo* info, const EnumFuncs* functions)
    : Type(info->type), m_enumInfo(info), m_functions(functions) {
    const char* const* end = info->values;
    while (*end != nullptr) {
        ++end;
    }
    m_tags.assign(info->values, end);
    m_marks.reserve(m_tags.size());
    for (const char* tag : m_tags) {
        m_marks.push_back(NameMarks::Get(tag));
    }
}

EnumType::~EnumType() = default;

const char* EnumType::GetTag(std::int32_t value) const {
    if (value < 0 || static_cast<std::size_t>(value) >= m_tags.size()) {
        throw Pellum::Exception(
            std::to_string(value) + " is not a value of " + GetName() + ", which has the values 0 to "
            + std::to_string(m_tags.size() - 1));
    }
    return m_tags[static_cast<std::size_t>(value)];
}

std::int32_t EnumType::GetValue(const std::string& tag) const {
    const std::int32_t value = FindValue(tag);
    if (value < 0) {
        throw Pellum::Exception("\"" + tag + "\" is not a tag of " + GetName());
    }
    return value;
}

std::int32_t EnumType::FindValue(std::string_view tag) const {
    const std::size_t value =
        NameMarks::Find(m_marks, tag, [&](std::size_t at) { return tag == m_tags[at]; });
    return value == NameMarks::kNone ? -1 : static_cast<std::int32_t>(value);
}

ArrayBase* EnumType::NewArray() const {
    return m_functions->createArray();
}

Any* EnumType::Box(const void* value) const {
    std::int32_t number = 0;
    std::memcpy(&number, value, sizeof(number));
    return m_functions->box(number);
}

} // namespace Tavik
