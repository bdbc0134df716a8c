#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace Tavik {

/// Finds names in a list by a mark of one byte for each, so that most of those that are not meant are never
/// looked at: for lists of some dozens, which one instruction or two go over.
class NameMarks {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// The mark of a name. Names of one type begin and end alike, but seldom have their length and middle in
    /// common, too.
    static char Get(std::string_view name) {
        if (name.empty()) {
            return 0;
        }
        const auto at = [name](std::size_t position) -> std::size_t {
            return static_cast<unsigned char>(name[position]);
        };
        const std::size_t size = name.size();
        return static_cast<char>(size * 5 + at(0) * 7 + at(size / 2) * 11 + at(size - 1) * 13);
    }

    /// The first position in the list with these marks that may have that name and for which
    /// `isSame(position)` is true, or `kNone`.
    template <class IsSame>
    static std::size_t Find(std::string_view marks, std::string_view name, const IsSame& isSame) {
        const char mark = Get(name);
        const char* const begin = marks.data();
        const char* const end = begin + marks.size();
        for (const char* at = begin; at != end; ++at) {
            at = static_cast<const char*>(std::memchr(at, mark, static_cast<std::size_t>(end - at)));
            if (at == nullptr) {
                return kNone;
            }
            if (const auto position = static_cast<std::size_t>(at - begin); isSame(position)) {
                return position;
            }
        }
        return kNone;
    }
};

} // namespace Tavik
