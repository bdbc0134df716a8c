#include "tools/morvane/demo/narrator.h"

#include "tools/morvane/terminal/display_width.h"
#include "tools/morvane/terminal/table.h"

#include <algorithm>

namespace Tool {

void Narrator::Heading(const std::string& title) {
    if (m_step++ > 0) {
        m_out.WriteLine();
    }
    m_out.WriteLine(m_out.Paint(Style::Heading, std::to_string(m_step) + ". " + title));
}

void Narrator::Say(const std::string& text, Style style) {
    PrintLines(Wrap(text, m_out.GetWidth(kIndent)), style);
}

void Narrator::ShowText(const std::string& text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        PrintLines({Abbreviate(text.substr(start, end - start), m_out.GetWidth(kIndent))}, Style::Faint);
        start = end + 1;
    }
}

void Narrator::ShowError(const std::string& message, const std::string& fileName) {
    const std::size_t end = message.find(": ", fileName.size());
    PrintLines({message.substr(0, end)}, Style::Name);
    for (const std::string& line : Wrap(message.substr(end + 2), m_out.GetWidth(kIndent + 2))) {
        PrintLines({"  " + line}, Style::Plain);
    }
}

void Narrator::PrintLines(const std::vector<std::string>& lines, Style style) {
    for (const std::string& line : lines) {
        m_out.WriteLine(std::string(kIndent, ' ') + m_out.Paint(style, line));
    }
}

} // namespace Tool
