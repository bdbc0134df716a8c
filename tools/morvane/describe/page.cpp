#include "tools/morvane/describe/page.h"

namespace Tool {

namespace {

constexpr std::size_t kFactName = 13;

} // namespace

void Page::Heading(const std::string& title) {
    m_output.WriteLine();
    Title(title);
}

void Page::Paragraph(const std::string& text, std::size_t indent) {
    for (const std::string& line : Wrap(text, m_output.GetWidth(indent))) {
        m_output.WriteLine(std::string(indent, ' ') + line);
    }
}

void Page::Fact(const std::string& name, const std::string& text, std::size_t indent) {
    if (!text.empty()) {
        m_output.WriteLine(
            std::string(indent, ' ') + m_output.Paint(Style::Faint, Pad(name, kFactName)) + text);
    }
}

void Page::Section(const std::string& title, const Table& table) {
    if (!table.IsEmpty()) {
        Heading(title);
        table.Print(m_output, kIndent);
    }
}

} // namespace Tool
