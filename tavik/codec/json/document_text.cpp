#include "tavik/codec/json/document_text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Tavik::Json {

namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";

bool IsLetter(char c) {
    return c >= 'a' && c <= 'z';
}

/// Where in the grammar the well-formed beginning of a document ends.
struct Context {
    bool inString = false;
    bool afterBackslash = false;
    std::vector<char> open; ///< the brackets and braces that are not closed
    char last = 0;          ///< the last character that is not white space; 0 for none
    bool afterKey = false;  ///< `last` ends a member's name
};

Context Scan(std::string_view text) {
    Context context;
    bool expectsKey = false;
    bool inKey = false;
    for (const char c : text) {
        if (context.inString) {
            const bool escaped = std::exchange(context.afterBackslash, c == '\\' && !context.afterBackslash);
            if (c == '"' && !escaped) {
                context.inString = false;
                context.last = c;
                context.afterKey = inKey;
            }
            continue;
        }
        if (kWhiteSpace.find(c) != std::string_view::npos) {
            continue;
        }
        context.last = c;
        context.afterKey = false;
        if (c == '"') {
            context.inString = true;
            inKey = expectsKey;
        } else if (c == '{' || c == '[') {
            context.open.push_back(c);
        } else if ((c == '}' || c == ']') && !context.open.empty()) {
            context.open.pop_back();
        }
        expectsKey = c == '{' || (c == ',' && !context.open.empty() && context.open.back() == '{');
    }
    return context;
}

/// What may come next outside of a string.
std::string DescribeNext(const Context& context) {
    const bool inObject = !context.open.empty() && context.open.back() == '{';
    switch (context.last) {
    case 0:
    case ':': return "a value";
    case '{': return "a member's name in quotes or '}'";
    case '[': return "a value or ']'";
    case ',': return inObject ? "a member's name in quotes" : "a value";
    default: break;
    }
    if (context.afterKey) {
        return "':'";
    }
    return context.open.empty() ? "nothing more" : (inObject ? "',' or '}'" : "',' or ']'");
}

} // namespace

TextPlace FindPlace(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, position);
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 without a line end
    const std::string_view line = before.substr(lineStart);
    const auto codePoints = std::count_if(
        line.begin(), line.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
    return {
        static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1,
        static_cast<std::size_t>(codePoints) + 1};
}

std::size_t FindStringStart(std::string_view text, std::size_t position) {
    // Every quote inside a string has a backslash in front of it, the one that opens it never has.
    for (std::size_t i = position; i-- > 0;) {
        if (text[i] == '"' && (i == 0 || text[i - 1] != '\\')) {
            return i;
        }
    }
    return position;
}

std::size_t FindWordStart(std::string_view text, std::size_t position) {
    while (position > 0 && IsLetter(text[position - 1])) {
        --position;
    }
    return position;
}

std::size_t FindNumberStart(std::string_view text, std::size_t position) {
    return text.substr(0, position).find_last_not_of("0123456789+-.eE") + 1; // 0 when there is none
}

std::size_t FindEscapeStart(std::string_view text, std::size_t position) {
    const std::size_t found = text.rfind('\\', position);
    return found != std::string_view::npos ? found : position;
}

std::size_t FindText(std::string_view text, std::size_t position) {
    return text.find_first_not_of(kWhiteSpace, position);
}

std::string DescribeSyntaxError(std::string_view text, std::size_t position) {
    const bool atEnd = position >= text.size();
    const Context context = Scan(text.substr(0, position));
    if (context.inString) {
        if (atEnd) {
            return "the text ends inside a string";
        }
        return context.afterBackslash ? "a backslash in a string must begin an escape such as \\n or \\u00e4"
                                      : "a control character in a string must be written as an escape";
    }
    return (atEnd ? "the text ends too early: expected " : "expected ") + DescribeNext(context);
}

} // namespace Tavik::Json
