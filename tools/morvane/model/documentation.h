#pragma once

#include <string>
#include <string_view>

namespace Tool {

/// The text that the schema has for a type, or for one of its members: a property, method or tag, or
/// "method.parameter". Empty when there is none.
std::string_view FindDocumentation(std::string_view type, std::string_view member = {});
/// The first paragraph of it as one line.
std::string GetSummary(std::string_view type, std::string_view member = {});

} // namespace Tool
