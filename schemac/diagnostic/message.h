#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace Schemac {

/// A message of the catalogue: its number and its text, with one `{}` for each argument. The number is 0
/// in a note, which belongs to the error that it stands behind. A text whose holes and
/// arguments differ in number does not compile.
template <typename... Args>
struct Message {
    constexpr Message(std::uint16_t messageNumber, std::string_view messageText)
        : number(messageNumber), text(messageText) {
        std::size_t holes = 0;
        for (std::size_t at = text.find("{}"); at != std::string_view::npos; at = text.find("{}", at + 2)) {
            ++holes;
        }
        if (holes != sizeof...(Args)) {
            throw std::logic_error("message text and arguments differ in number");
        }
    }

    std::uint16_t number;
    std::string_view text;
};

} // namespace Schemac
