#pragma once

#include "pellum/system/date_time.h"
#include "tavik/type/type.h"
#include "tavik/value/text_values.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

class EnumType;

namespace Json {

/// A JSON value that is neither object nor array nor null.
struct Token {
    enum class Kind { Boolean, Number, String };

    Kind kind;
    std::string_view text; ///< a number as written, a string's content, "true" or "false"

    /// "a number"
    const char* Describe() const;
};

/// Reads one token as a value of one type, which is a built-in scalar type or an enumeration. Throws
/// `Refusal` for one that is none, whose reason shows nothing of the content of a `string`, which may be
/// secret.
class ScalarReader {
public:
    /// Both are borrowed.
    ScalarReader(const Type& type, const Token& token) : m_type(type), m_token(token) {}

    /// Hands the plain value to `take`, which can be called with that of each of the types; that of an
    /// enumeration is its number.
    template <class Take>
    void Read(Take take) const {
        switch (m_type.GetKind()) {
        case TypeKind::Boolean: take(ReadBoolean()); break;
        case TypeKind::Byte: take(ReadInteger<signed char>()); break;
        case TypeKind::Int: take(ReadInteger<std::int32_t>()); break;
        case TypeKind::Long: take(ReadInteger<std::int64_t>()); break;
        case TypeKind::Float: take(ReadFloat()); break;
        case TypeKind::String: take(std::string(ReadText())); break;
        case TypeKind::DateTime: take(ReadDateTime()); break;
        case TypeKind::Binary: take(ReadBinary()); break;
        case TypeKind::TypeName: take(TypeName(std::string(ReadText()))); break;
        case TypeKind::PropertyPath: take(PropertyPath(std::string(ReadText()))); break;
        case TypeKind::Enum: take(ReadTag()); break;
        default: Refuse(m_token.Describe());
        }
    }

    /// A text without a copy of it, whichever of the types of texts it is for.
    std::string_view ReadText() const {
        Require(Token::Kind::String);
        return m_token.text;
    }

private:
    void Require(Token::Kind kind) const {
        if (m_token.kind != kind) {
            Refuse(m_token.Describe());
        }
    }

    bool ReadBoolean() const {
        Require(Token::Kind::Boolean);
        return m_token.text.front() == 't';
    }

    template <class T>
    T ReadInteger() const;
    float ReadFloat() const;
    Pellum::System::DateTime ReadDateTime() const;
    std::vector<std::uint8_t> ReadBinary() const;
    std::int32_t ReadTag() const;

    /// `found` is never the content of a `string`, which may be secret.
    [[noreturn]] void Refuse(const std::string& found) const;
    [[noreturn]] void RefuseTag(const EnumType& type) const;
    /// The number, unless it is endless.
    std::string DescribeNumber() const;

    const Type& m_type;
    const Token& m_token;
};

/// The bytes that `token` is the base64 text of. Throws `Refusal`.
std::string ReadBytes(const Token& token);

} // namespace Json
} // namespace Tavik
