#pragma once

#include "pellum/export.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// Storage for the texts of values. Each thread keeps the storage of some of the long texts that it throws
/// away, and copies others into it, which saves the larger part of a copy.
///
/// Who keeps texts and for how long is as with blocks (see `block_cache.h`). A thread keeps at most 16 KiB of
/// each size, which are steps of 16 bytes up to 256 to which texts are rounded down, and a `std::string` for
/// each text: some 400 KB if it throws away thousands of texts of all sizes. What a text said stays in its
/// storage until that is used again or given back. All functions are thread safe: every thread has its own.
namespace Pellum {

/// The longest text that a `std::string` of libstdc++ holds in itself.
inline constexpr std::size_t kShortText = 15;

/// `CopyText` of a text longer than `kShortText`.
PELLUM_API void CopyLongText(std::string& to, const std::string& from);
PELLUM_API void CopyLongText(std::string& to, std::string_view from);
/// `RecycleTexts` of one text that has storage of its own.
PELLUM_API void KeepText(std::string& text) noexcept;

/// Assigns `from`, a string or a view of another text, to `to`, into storage that the thread has kept where
/// `to` has no room. Throws `std::bad_alloc`; `to` is as it was then, but perhaps with more room.
template <class Text>
void CopyText(std::string& to, const Text& from) {
    if (from.size() <= kShortText) {
        to = from;
    } else {
        CopyLongText(to, from);
    }
}

/// Moves `from` into `to`, which is another text. The old storage of `to` is freed, and not handed to `from`
/// as in an assignment, which is half the work.
inline void ReplaceText(std::string& to, std::string&& from) noexcept {
    std::destroy_at(&to);
    std::construct_at(&to, std::move(from));
}

/// Keeps the storage of texts that are about to be destroyed, where there is room for it. They may hold
/// anything afterwards.
template <class... Text>
void RecycleTexts(Text&... texts) noexcept {
    ((texts.capacity() > kShortText ? KeepText(texts) : void()), ...);
}

/// Frees what the calling thread keeps of texts. `ReleaseCachedBlocks` does so, too.
PELLUM_API void ReleaseCachedTexts() noexcept;

} // namespace Pellum
