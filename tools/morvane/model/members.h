#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/type/type.h"

#include <vector>

namespace Tool {

enum class MemberKind { Property, Method, Value };

/// Something that a type declares.
struct Member {
    const Tavik::Type* owner = nullptr;
    MemberKind kind = MemberKind::Property;
    const char* name = nullptr;
    const Tavik::PropertyDescriptor* property = nullptr; ///< null unless it is a property
    const Tavik::MethodDescriptor* method = nullptr;     ///< null unless it is a method

    /// Name of the version that introduced it; that of the type for a value.
    const char* GetVersionName() const;
};

/// "property", "method" or "value"
const char* GetMemberKindName(MemberKind kind);

/// What the type itself declares, in declared order: the properties, methods or values.
std::vector<Member> GetOwnMembers(const Tavik::Type& type);
/// The type and its bases, nearest first, borrowed.
std::vector<const Tavik::Type*> GetLine(const Tavik::Type& type);

} // namespace Tool
