#pragma once

#include <string>

#include "schemac/model/type.h"

namespace Schemac::Emit {

/// The lines as a documentation comment.
std::string DocComment(const std::string& doc);

/// What stands above a type's class.
std::string TypeDoc(const Model::Type& type);

/// Type of a property, parameter or result: "morvane.task.TaskInfo[]".
std::string TypeText(const Model::Property& property);

/// `name`, type and flags of a property, and since when it is there, as one line of text.
std::string PropertyFacts(const Model::Property& property, const Model::Type& owner);

} // namespace Schemac::Emit
