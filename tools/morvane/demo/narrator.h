#pragma once

#include "tools/morvane/terminal/output.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Tool {

/// Writes what the guided tour tells: numbered headings and, indented below them, text that fits the
/// terminal.
class Narrator {
public:
    /// Columns by which everything below a heading is indented.
    static constexpr std::size_t kIndent = 3;

    /// `out` is borrowed and outlives the narrator.
    explicit Narrator(Output& out) : m_out(out) {}

    Output& GetOutput() const { return m_out; }

    int GetStepCount() const { return m_step; }

    /// Begins a step.
    void Heading(const std::string& title);
    void Say(const std::string& text, Style style = Style::Plain);
    /// JSON, line by line; one that does not fit is cut.
    void ShowText(const std::string& text);
    /// An error message that begins with the name of a file; the place stands out from what is wrong there.
    void ShowError(const std::string& message, const std::string& fileName);

private:
    void PrintLines(const std::vector<std::string>& lines, Style style);

    Output& m_out;
    int m_step = 0;
};

} // namespace Tool
