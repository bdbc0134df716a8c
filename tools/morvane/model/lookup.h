#pragma once

#include "tavik/type/data_object_type.h"
#include "tools/morvane/model/members.h"

#include <optional>
#include <string>

/// Finds types and what they declare by what a person calls them.
namespace Tool {

/// The type of a dotted name, wire name or C++ class, or of the end of a dotted name or class
/// ("LiveComputerLocation"). What fits exactly goes first; upper and lower case make no difference where one
/// type is meant. Throws `Pellum::Exception`, with suggestions, when there is none or more than one.
const Tavik::Type& FindType(const std::string& name);
/// The same for a data object or fault type.
const Tavik::DataObjectType& FindDataType(const std::string& name);

/// What a name stands for.
struct Subject {
    const Tavik::Type* type;
    std::optional<Member> member; ///< the member that is meant, declared by the type or a base of it
};

/// The type of a name, or else the member: "TYPE.member", or the name or wire name of a method that no other
/// type declares. Throws `Pellum::Exception`, with suggestions, when there is none or more than one.
Subject FindSubject(const std::string& name);

} // namespace Tool
