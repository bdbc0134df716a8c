#pragma once

#include "pellum/export.h"

#include <cstddef>
#include <string>

/// Storage for the texts of values. Each thread keeps some of the long texts that it throws away, and copies
/// others into their storage: the allocator's part in that is the larger one.
///
/// Kept and bounded as blocks are (see `block_cache.h`): 16 KiB of texts of each size, up to 255 characters.
namespace Pellum {

/// Texts up to this length have their characters in themselves, or cost no more than if they had.
inline constexpr std::size_t kShortText = 15;

PELLUM_API void CopyLongText(std::string& to, const std::string& from);
PELLUM_API void KeepText(std::string& text) noexcept;

/// Assigns a text. Throws `std::bad_alloc`, and leaves `to` as it was then.
inline void CopyText(std::string& to, const std::string& from) {
    if (from.size() <= kShortText) {
        to = from;
    } else {
        CopyLongText(to, from);
    }
}

/// Takes the storage of texts that are about to be destroyed; they may hold anything afterwards.
template <class... Text>
void ReleaseTexts(Text&... texts) noexcept {
    ((texts.capacity() > kShortText ? KeepText(texts) : void()), ...);
}

/// Frees what the calling thread keeps of texts. `ReleaseCachedBlocks` does so, too.
PELLUM_API void ReleaseCachedTexts() noexcept;

} // namespace Pellum
