#include "tavik/codec/json/event_parser.h"

#include "pellum/error/type_mismatch.h"
#include "tavik/codec/json/document_text.h"
#include "tavik/codec/json/wording.h"
#include "tavik/value/json_text.h"

#include <boost/json/basic_parser_impl.hpp>

#include <cstdint>
#include <utility>

namespace Tavik::Json {

namespace {

using boost::json::error;
using boost::json::error_code;

/// Hands the parser's events on to a sink and keeps what it refuses, together with its place.
class EventHandler {
public:
    static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);

    EventHandler(EventSink& sink, std::string_view text) : m_sink(sink), m_text(text) {}

    /// Empty when nothing was refused.
    const std::string& GetReason() const { return m_reason; }

    /// Where the refused token begins, from where the parser stopped.
    std::size_t FindToken(std::size_t stop) const {
        switch (m_token) {
        case TokenShape::String: return FindStringStart(m_text, stop);
        case TokenShape::Word: return FindWordStart(m_text, stop);
        case TokenShape::Number: return m_numberStart;
        case TokenShape::Bracket: break;
        }
        return stop;
    }

    bool on_document_begin(error_code&) { return true; }

    bool on_document_end(error_code&) { return true; }

    bool on_object_begin(error_code& code) {
        return Try(TokenShape::Bracket, code, [&] { m_sink.BeginObject(); });
    }

    bool on_object_end(std::size_t, error_code& code) {
        return Try(TokenShape::Bracket, code, [&] { m_sink.EndObject(); });
    }

    bool on_array_begin(error_code& code) {
        return Try(TokenShape::Bracket, code, [&] { m_sink.BeginArray(); });
    }

    bool on_array_end(std::size_t, error_code& code) {
        return Try(TokenShape::Bracket, code, [&] { m_sink.EndArray(); });
    }

    bool on_key_part(boost::json::string_view part, std::size_t, error_code&) { return Keep(part); }

    bool on_key(boost::json::string_view part, std::size_t, error_code& code) {
        return Try(TokenShape::String, code, [&] { m_sink.Key(Complete(part)); });
    }

    bool on_string_part(boost::json::string_view part, std::size_t, error_code&) { return Keep(part); }

    bool on_string(boost::json::string_view part, std::size_t, error_code& code) {
        return Try(TokenShape::String, code, [&] { m_sink.Scalar({Token::Kind::String, Complete(part)}); });
    }

    bool on_number_part(boost::json::string_view, error_code&) { return true; } // comes in one piece

    bool on_int64(std::int64_t, boost::json::string_view text, error_code& code) {
        return Number(text, code);
    }

    bool on_uint64(std::uint64_t, boost::json::string_view text, error_code& code) {
        return Number(text, code);
    }

    bool on_double(double, boost::json::string_view text, error_code& code) { return Number(text, code); }

    bool on_bool(bool value, error_code& code) {
        return Try(TokenShape::Word, code, [&] {
            m_sink.Scalar({Token::Kind::Boolean, value ? "true" : "false"});
        });
    }

    bool on_null(error_code& code) {
        return Try(TokenShape::Word, code, [&] { m_sink.Null(); });
    }

    bool on_comment_part(boost::json::string_view, error_code&) { return true; }

    bool on_comment(boost::json::string_view, error_code&) { return true; }

private:
    enum class TokenShape { Bracket, String, Number, Word };

    bool Keep(boost::json::string_view part) {
        m_parts.append(part.data(), part.size());
        return true;
    }

    /// The whole of a string that may have come in parts; valid until the next one.
    std::string_view Complete(boost::json::string_view last) {
        if (m_parts.empty()) {
            return {last.data(), last.size()};
        }
        Keep(last);
        m_complete.swap(m_parts);
        m_parts.clear();
        return m_complete;
    }

    bool Number(boost::json::string_view text, error_code& code) {
        m_numberStart = static_cast<std::size_t>(text.data() - m_text.data());
        return Try(TokenShape::Number, code, [&] {
            m_sink.Scalar({Token::Kind::Number, std::string_view(text.data(), text.size())});
        });
    }

    template <class Event>
    bool Try(TokenShape token, error_code& code, Event event) {
        try {
            event();
            return true;
        } catch (Refusal& refusal) {
            m_reason = std::move(refusal.reason);
        } catch (const Pellum::TypeMismatchException& mismatch) {
            // A registered description that does not agree with its class.
            m_reason = mismatch.what();
        }
        m_token = token;
        code = error::exception;
        return false;
    }

    EventSink& m_sink;
    std::string_view m_text;
    std::string m_parts;    ///< of the string that is being read
    std::string m_complete; ///< the last string that came in parts
    std::size_t m_numberStart = 0;
    std::string m_reason;
    TokenShape m_token = TokenShape::Bracket;
};

/// Reads one text.
class EventParser {
public:
    EventParser(std::string_view text, const ParseOptions& options, EventSink& sink)
        : m_text(text), m_options(options), m_sink(sink) {}

    void Run() {
        CheckInput();
        boost::json::parse_options parseOptions;
        // One level more than the sink's own limit, which is reached first.
        parseOptions.max_depth = m_options.limits.depth + m_options.outerDepth + 1;
        boost::json::basic_parser<EventHandler> parser(parseOptions, m_sink, m_text);
        error_code code;
        const std::size_t stop = parser.write_some(false, m_text.data(), m_text.size(), code);
        if (!parser.handler().GetReason().empty()) {
            Fail(parser.handler().FindToken(stop), parser.handler().GetReason());
        }
        if (code) {
            FailSyntax(code, stop);
        }
        if (const std::size_t extra = FindText(m_text, stop); extra != std::string_view::npos) {
            Fail(extra, "expected nothing more after the value");
        }
    }

private:
    [[noreturn]] void Fail(std::size_t position, std::string reason) const {
        throw DecodeError(
            m_options.sourceName, FindPlace(m_text, position), m_sink.GetPath(), std::move(reason));
    }

    void CheckInput() const {
        if (m_options.limits.depth > kMaxDepth) {
            throw Pellum::Exception(
                "a depth limit of " + std::to_string(m_options.limits.depth)
                + " is not supported; the most is " + std::to_string(kMaxDepth));
        }
        if (m_text.size() > m_options.limits.inputBytes) {
            Fail(
                0, "the text is longer than the limit of " + std::to_string(m_options.limits.inputBytes)
                       + " bytes");
        }
        if (m_text.starts_with("\xEF\xBB\xBF")) {
            Fail(0, "the text begins with a byte order mark; expected UTF-8 without one");
        }
        if (FindText(m_text) == std::string_view::npos) {
            Fail(m_text.size(), "the text is empty");
        }
    }

    [[noreturn]] void FailSyntax(const error_code& code, std::size_t stop) const {
        const std::size_t invalid = FindInvalidUtf8(m_text.substr(0, stop + 4));
        if (invalid <= stop) {
            Fail(invalid, "the text is not well-formed UTF-8");
        }
        if (code == error::exponent_overflow) {
            Fail(FindNumberStart(m_text, stop), "the number's exponent is too large");
        }
        if (code == error::expected_hex_digit) {
            Fail(FindEscapeStart(m_text, stop), "expected four hexadecimal digits after \\u");
        }
        if (code == error::illegal_leading_surrogate || code == error::illegal_trailing_surrogate) {
            Fail(
                FindEscapeStart(m_text, stop), "expected a \\u escape for half of a surrogate pair to be "
                                               "followed by one for the other half");
        }
        Fail(stop, DescribeSyntaxError(m_text, stop));
    }

    std::string_view m_text;
    const ParseOptions& m_options;
    EventSink& m_sink;
};

} // namespace

void ParseEvents(std::string_view text, const ParseOptions& options, EventSink& sink) {
    EventParser(text, options, sink).Run();
}

} // namespace Tavik::Json
