#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Schemac::Emit {

/// A value for a hole of a template.
using Hole = std::pair<std::string_view, std::string_view>;

/// Fills `$name$` in `text` from `holes`; `$$` gives one '$'. A template that starts with a line break loses
/// it, so that a raw string can begin on its own line.
///
/// A value of several lines keeps the indentation of its hole. A hole that stands alone on a line takes the
/// line with it when its value is empty, and the value's last line break is not doubled.
///
/// Throws std::logic_error for a hole without a value, a value without a hole, or a '$' that opens no hole.
std::string Fill(std::string_view text, const std::vector<Hole>& holes);

} // namespace Schemac::Emit
