#include "tavik/codec/json/scalar_reader.h"

#include "tavik/codec/json/wording.h"
#include "tavik/type/enum_type.h"
#include "tavik/value/json_text.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

namespace Tavik::Json {

namespace {

/// Lists of tags that are longer are not shown.
constexpr std::size_t kMostTagsShown = 8;
constexpr std::size_t kLongestNumberShown = 40;

/// As `std::from_chars`, which makes no promise for characters.
template <class T>
std::from_chars_result ParseInteger(const char* begin, const char* end, T& number) {
    if constexpr (sizeof(T) == 1) {
        std::int32_t wide = 0;
        std::from_chars_result result = std::from_chars(begin, end, wide);
        if (wide < std::numeric_limits<T>::min() || wide > std::numeric_limits<T>::max()) {
            result.ec = std::errc::result_out_of_range;
        }
        number = static_cast<T>(wide);
        return result;
    } else {
        return std::from_chars(begin, end, number);
    }
}

} // namespace

const char* Token::Describe() const {
    switch (kind) {
    case Kind::Boolean: return "a boolean";
    case Kind::Number: return "a number";
    case Kind::String: return "a string";
    }
    return "";
}

void ScalarReader::Refuse(const std::string& found) const {
    throw Refusal{ExpectedButFound({&m_type}, found)};
}

std::string ScalarReader::DescribeNumber() const {
    return m_token.text.size() <= kLongestNumberShown
             ? std::string(m_token.text)
             : "a number of " + std::to_string(m_token.text.size()) + " characters";
}

template <class T>
T ScalarReader::ReadInteger() const {
    // Not every peer can write 64 bits as a number.
    const bool isText = sizeof(T) == sizeof(std::int64_t) && m_token.kind == Token::Kind::String;
    if (!isText) {
        Require(Token::Kind::Number);
    }
    const char* const end = m_token.text.data() + m_token.text.size();
    T number = 0;
    const auto [stop, error] = ParseInteger(m_token.text.data(), end, number);
    if (stop != end || (error != std::errc() && error != std::errc::result_out_of_range)) {
        Refuse(isText ? "a string that is not a decimal number" : "a number with a fraction or an exponent");
    }
    if (error == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<T>;
        throw Refusal{
            "expected " + DescribeExpected({&m_type}) + " between " + std::to_string(Limits::min()) + " and "
            + std::to_string(Limits::max()) + ", found " + DescribeNumber()};
    }
    return number;
}

template signed char ScalarReader::ReadInteger<signed char>() const;
template std::int32_t ScalarReader::ReadInteger<std::int32_t>() const;
template std::int64_t ScalarReader::ReadInteger<std::int64_t>() const;

float ScalarReader::ReadFloat() const {
    Require(Token::Kind::Number);
    const char* const begin = m_token.text.data();
    const char* const end = begin + m_token.text.size();
    float number = 0;
    if (std::from_chars(begin, end, number).ec == std::errc() && std::isfinite(number)) {
        return number;
    }
    // Too large is an error; too small is the nearest float there is.
    double wide = 0;
    if (std::from_chars(begin, end, wide).ec == std::errc() && std::abs(wide) < 1) {
        return static_cast<float>(wide);
    }
    throw Refusal{"expected a float between -3.4028235e38 and 3.4028235e38, found " + DescribeNumber()};
}

Pellum::System::DateTime ScalarReader::ReadDateTime() const {
    Require(Token::Kind::String);
    Pellum::System::DateTime moment;
    std::string why;
    if (!Pellum::System::DateTime::TryParse(m_token.text, moment, &why)) {
        Refuse(Quote(m_token.text) + ": " + why);
    }
    return moment;
}

std::vector<std::uint8_t> ScalarReader::ReadBinary() const {
    const std::string bytes = ReadBytes(m_token);
    return {bytes.begin(), bytes.end()};
}

std::int32_t ScalarReader::ReadTag() const {
    Require(Token::Kind::String);
    const auto& type = static_cast<const EnumType&>(m_type);
    const std::int32_t value = type.FindValue(m_token.text);
    if (value < 0) {
        RefuseTag(type);
    }
    return value;
}

void ScalarReader::RefuseTag(const EnumType& type) const {
    const std::vector<std::string> tags(type.GetTags().begin(), type.GetTags().end());
    std::string found = Quote(m_token.text) + DidYouMean(m_token.text, tags);
    if (tags.size() <= kMostTagsShown) {
        const char* separator = "; the tags are ";
        for (const std::string& tag : tags) {
            found += separator + tag;
            separator = ", ";
        }
    }
    Refuse(found);
}

std::string ReadBytes(const Token& token) {
    if (token.kind != Token::Kind::String) {
        throw Refusal{std::string("expected a base64 string, found ") + token.Describe()};
    }
    std::string bytes;
    if (!DecodeBase64(token.text, bytes)) {
        throw Refusal{"expected a base64 string, found one that is not base64 with padding"};
    }
    return bytes;
}

} // namespace Tavik::Json
