#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

namespace Tool {

/// What a piece of text is; how that looks is up to the terminal.
enum class Style { Plain, Heading, Name, Faint, Good, Bad, Caution };

enum class ColourChoice { Auto, Always, Never };

/// One of the program's output streams and what it is able to show. Not synchronised.
class Output {
public:
    /// Width of what is no terminal: nothing has to be broken into lines there.
    static constexpr std::size_t kUnlimited = static_cast<std::size_t>(-1);

    /// `stream` is borrowed. `Auto` means colours at a terminal, unless NO_COLOR is set.
    explicit Output(std::FILE* stream, ColourChoice choice = ColourChoice::Auto);

    void SetColourChoice(ColourChoice choice);

    bool IsTerminal() const { return m_isTerminal; }

    /// Columns: of the terminal, or what COLUMNS says of it.
    std::size_t GetWidth() const { return m_width; }

    /// Columns for text that is indented: at least one.
    std::size_t GetWidth(std::size_t indent) const {
        return m_width == kUnlimited ? kUnlimited : std::max(m_width, indent + 1) - indent;
    }

    /// The text with the marks that show it in that style, if any.
    std::string Paint(Style style, std::string_view text) const;
    void Write(std::string_view text);
    void WriteLine(std::string_view text = {});
    /// Throws `Pellum::Exception` when not all that was written has arrived.
    void Flush();

private:
    std::FILE* m_stream;
    bool m_isTerminal;
    bool m_hasColours = false;
    std::size_t m_width;
};

/// Where a command writes to: its results, and what has to be said about them.
struct Console {
    Output out{stdout};
    Output err{stderr};

    /// Reports a mistake on `err`: "<place>: error: <text>".
    void WriteError(const std::string& place, const std::string& text);
};

/// `text`, which a user gave, with control characters as escapes, so that none of them steers the terminal.
/// Ends of lines stay if asked for.
std::string MakeVisible(std::string_view text, bool keepsLines = false);

} // namespace Tool
