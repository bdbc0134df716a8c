#pragma once

#include "pellum/system/date_time.h"
#include "tavik/descriptor/records.h"
#include "tavik/value/text_values.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Tavik {

class Type;

namespace Json {

/// A JSON value that is neither object nor array nor null.
struct Token {
    enum class Kind { Boolean, Number, String };

    Kind kind;
    std::string_view text; ///< a number as written, a string's content, "true" or "false"

    /// "a number"
    const char* Describe() const;
};

/// A plain value of each built-in type; a value of an enumeration is its number.
using PlainValue = std::variant<
    bool, signed char, std::int32_t, std::int64_t, float, std::string, Pellum::System::DateTime,
    std::vector<std::uint8_t>, TypeName, PropertyPath>;

/// The value of `token` as a scalar of `type`, which is a built-in scalar type or an enumeration. Throws
/// `Refusal`, whose reason shows nothing of the content of a `string`, which may be secret.
PlainValue ReadScalar(const Type& type, const Token& token);
/// The bytes that `token` is the base64 text of. Throws `Refusal`.
std::string ReadBytes(const Token& token);

} // namespace Json
} // namespace Tavik
