#include "tools/morvane/terminal/output.h"

#include "pellum/error/exception.h"
#include "tools/morvane/platform.h"

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <system_error>

namespace Tool {

namespace {

constexpr std::size_t kUsualWidth = 80;

std::size_t FindWidth(std::FILE* stream) {
    if (const char* columns = std::getenv("COLUMNS")) {
        const std::string_view text = columns;
        std::size_t width = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), width);
        if (error == std::errc() && end == text.data() + text.size() && width > 0) {
            return width;
        }
    }
    return GetTerminalWidth(stream).value_or(kUsualWidth);
}

bool MayUseColours() {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return (noColour == nullptr || *noColour == '\0')
        && (terminal == nullptr || std::string_view(terminal) != "dumb");
}

const char* GetMark(Style style) {
    switch (style) {
    case Style::Heading: return "\x1b[1m";
    case Style::Name: return "\x1b[36m";
    case Style::Faint: return "\x1b[2m";
    case Style::Good: return "\x1b[32m";
    case Style::Bad: return "\x1b[31m";
    case Style::Caution: return "\x1b[33m";
    case Style::Plain: break;
    }
    return "";
}

} // namespace

Output::Output(std::FILE* stream, ColourChoice choice)
    : m_stream(stream),
      m_isTerminal(Tool::IsTerminal(stream)),
      m_width(m_isTerminal ? FindWidth(stream) : kUnlimited) {
    SetColourChoice(choice);
}

void Output::SetColourChoice(ColourChoice choice) {
    m_hasColours =
        choice == ColourChoice::Always || (choice == ColourChoice::Auto && m_isTerminal && MayUseColours());
}

std::string Output::Paint(Style style, std::string_view text) const {
    if (!m_hasColours || style == Style::Plain || text.empty()) {
        return std::string(text);
    }
    return GetMark(style) + std::string(text) + "\x1b[0m";
}

void Output::Write(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), m_stream);
}

void Output::WriteLine(std::string_view text) {
    Write(text);
    Write("\n");
}

void Output::Flush() {
    if (std::fflush(m_stream) != 0 || std::ferror(m_stream) != 0) {
        throw Pellum::Exception("cannot write the output: " + std::generic_category().message(errno));
    }
}

std::string MakeVisible(std::string_view text, bool keepsLines) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string visible;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x20 || byte == 0x7F) && !(keepsLines && c == '\n')) {
            visible += {'\\', 'x', kDigits[byte / 16], kDigits[byte % 16]};
        } else {
            visible += c;
        }
    }
    return visible;
}

void Console::WriteError(const std::string& place, const std::string& text) {
    err.WriteLine(
        MakeVisible(place) + ": " + err.Paint(Style::Bad, "error:") + ' ' + MakeVisible(text, true));
}

} // namespace Tool
