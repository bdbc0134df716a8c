#include "schemac/diagnostic/reporter.h"

#include <algorithm>
#include <ostream>

namespace Schemac {

namespace {

constexpr std::string_view kRed = "\033[1;31m";
constexpr std::string_view kCyan = "\033[1;36m";
constexpr std::string_view kBold = "\033[1m";
constexpr std::string_view kReset = "\033[0m";

/// Characters of a source line shown before and after the place, so that a line of megabytes stays readable.
constexpr std::size_t kContext = 120;

bool StartsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

/// A byte that can be sent to a terminal.
char Printable(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return (value < 0x20 && byte != '\t') || value == 0x7F ? '?' : byte;
}

class Printer {
public:
    Printer(const SourceManager& sources, const PrintOptions& options, std::ostream& out)
        : m_sources(sources), m_options(options), m_out(out) {}

    void Print(const Diagnostic& diagnostic) {
        PrintHead(diagnostic.span, "error", kRed, diagnostic.text);
        m_out << " [" << ErrorCode(diagnostic.number) << "]\n";
        PrintExcerpt(diagnostic.span);
        for (const Diagnostic::Note& note : diagnostic.notes) {
            PrintHead(note.span, "note", kCyan, note.text);
            m_out << '\n';
            PrintExcerpt(note.span);
        }
    }

private:
    std::string_view Colour(std::string_view code) const {
        return m_options.useColour ? code : std::string_view();
    }

    void PrintHead(
        const Span& span, std::string_view kind, std::string_view colour, const std::string& text) {
        m_out << Colour(kBold);
        if (span.IsValid()) {
            const Position position = m_sources.Locate(span);
            m_out << m_sources.Path(span.file) << ':' << position.line << ':' << position.column << ": ";
        } else {
            m_out << "schemac: ";
        }
        m_out << Colour(colour) << kind << ": " << Colour(kReset) << text;
    }

    void PrintExcerpt(const Span& span) {
        if (!span.IsValid()) {
            return;
        }
        const std::string_view line = m_sources.Line(span.file, m_sources.Locate(span).line);
        const auto lineOffset = static_cast<std::size_t>(line.data() - m_sources.Text(span.file).data());
        const std::size_t place = std::min<std::size_t>(span.offset - lineOffset, line.size());
        const std::size_t length = std::min<std::size_t>(span.length, line.size() - place);

        std::size_t first = place > kContext ? place - kContext : 0;
        std::size_t last = std::min(line.size(), place + std::min(length, kContext) + kContext);
        while (first > 0 && !StartsCharacter(line[first])) {
            --first;
        }
        while (last < line.size() && !StartsCharacter(line[last])) {
            ++last;
        }

        std::string text;
        std::string marks;
        for (std::size_t at = first; at < last; ++at) {
            text += Printable(line[at]);
            if (StartsCharacter(line[at]) || at == place) {
                marks += Mark(line[at], at, place, length);
            }
        }
        if (place == line.size()) {
            marks += '^';
        }
        marks.erase(marks.find_last_not_of(" \t") + 1);
        m_out << text << '\n' << Colour(kRed) << marks << Colour(kReset) << '\n';
    }

    static char Mark(char byte, std::size_t at, std::size_t place, std::size_t length) {
        if (at == place) {
            return '^';
        }
        if (at > place && at < place + length) {
            return '~';
        }
        return byte == '\t' ? '\t' : ' ';
    }

    const SourceManager& m_sources;
    const PrintOptions& m_options;
    std::ostream& m_out;
};

} // namespace

std::string FillMessage(std::string_view text, const std::string_view* args, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t hole = text.find("{}");
        result += text.substr(0, hole);
        result += args[index];
        text.remove_prefix(hole + 2);
    }
    result += text;
    return result;
}

std::vector<const Diagnostic*> Reporter::Sorted() const {
    std::vector<const Diagnostic*> sorted;
    for (const Diagnostic& diagnostic : m_diagnostics) {
        sorted.push_back(&diagnostic);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const Diagnostic* left, const Diagnostic* right) {
        return left->span.file != right->span.file ? left->span.file < right->span.file
                                                   : left->span.offset < right->span.offset;
    });
    return sorted;
}

std::string ErrorCode(std::uint16_t number) {
    const std::string digits = std::to_string(number);
    return "E" + std::string(4 - std::min<std::size_t>(4, digits.size()), '0') + digits;
}

void PrintDiagnostics(
    const Reporter& reporter, const SourceManager& sources, const PrintOptions& options, std::ostream& out) {
    Printer printer(sources, options, out);
    const std::vector<const Diagnostic*> sorted = reporter.Sorted();
    const std::size_t shown = std::min(sorted.size(), options.maxErrors);
    for (std::size_t index = 0; index < shown; ++index) {
        printer.Print(*sorted[index]);
    }
    if (shown < sorted.size()) {
        out << "schemac: " << sorted.size() - shown << " more errors\n";
    }
}

} // namespace Schemac
