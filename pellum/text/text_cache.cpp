#include "pellum/text/text_cache.h"

#include <new>
#include <utility>
#include <vector>

namespace Pellum {

#ifdef PELLUM_KEEPS_BLOCKS

namespace {

constexpr std::size_t kTextStep = 16; ///< bytes of storage by which texts are told apart
constexpr std::size_t kFirstList = 2; ///< of the shortest texts that are copied into kept storage
constexpr std::size_t kLists = 17; ///< the last one is of 256 to 271 bytes; those before the first stay empty
constexpr std::size_t kMostTextBytes = std::size_t{16} * 1024; ///< of one list

static_assert((kShortText + 1) / kTextStep + 1 == kFirstList);

using Texts = std::vector<std::string>;

/// Has no destructor, so that every access is a plain one: `TextCloser` frees what is in it. The list at `i`
/// is of texts with at least `i * kTextStep` bytes of storage, the final null character's included.
struct KeptTexts {
    Texts* lists = nullptr; ///< owned; null before the first text, and once the thread has ended
    bool isOpened = false;  ///< and stays so then
};

constinit thread_local KeptTexts kept;

/// Frees the texts of a thread that ends.
struct TextCloser {
    TextCloser() = default;

    ~TextCloser() { delete[] std::exchange(kept.lists, nullptr); }

    TextCloser(const TextCloser&) = delete;
    TextCloser& operator=(const TextCloser&) = delete;
};

/// Prepares the thread for keeping texts, once; false when that can not be.
[[gnu::noinline]] bool OpenTexts() {
    if (!std::exchange(kept.isOpened, true)) {
        static thread_local const TextCloser closer;
        kept.lists = new (std::nothrow) Texts[kLists];
    }
    return kept.lists != nullptr;
}

/// Gives `to` storage that has been kept, or is of a size that can be kept, where it has no room.
inline void MakeRoom(std::string& to, std::size_t size) {
    const std::size_t index = size / kTextStep + 1;
    if (index >= kLists || to.capacity() >= size) {
        return;
    }
    if (kept.lists != nullptr && !kept.lists[index].empty()) {
        Texts& texts = kept.lists[index];
        ReplaceText(to, std::move(texts.back()));
        texts.pop_back();
    } else {
        to.reserve(index * kTextStep - 1);
    }
}

} // namespace

void CopyLongText(std::string& to, const std::string& from) {
    MakeRoom(to, from.size());
    to = from;
}

void CopyLongText(std::string& to, std::string_view from) {
    MakeRoom(to, from.size());
    to = from;
}

void KeepText(std::string& text) noexcept {
    const std::size_t index = (text.capacity() + 1) / kTextStep;
    if (index < kFirstList || index >= kLists || (kept.lists == nullptr && !OpenTexts())) {
        return;
    }
    Texts& texts = kept.lists[index];
    if (texts.size() * index < kMostTextBytes / kTextStep) {
        try {
            texts.push_back(std::move(text));
        } catch (const std::bad_alloc&) { // then it is thrown away as any other text
        }
    }
}

void ReleaseCachedTexts() noexcept {
    for (std::size_t i = kFirstList; kept.lists != nullptr && i < kLists; ++i) {
        Texts().swap(kept.lists[i]);
    }
}

#else

void CopyLongText(std::string& to, const std::string& from) {
    to = from;
}

void CopyLongText(std::string& to, std::string_view from) {
    to = from;
}

void KeepText(std::string& /*text*/) noexcept {}

void ReleaseCachedTexts() noexcept {}

#endif

} // namespace Pellum
