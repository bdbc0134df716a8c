#include "pellum/text/text_cache.h"

#include <new>
#include <utility>
#include <vector>

namespace Pellum {

#ifdef PELLUM_KEEPS_BLOCKS

namespace {

constexpr std::size_t kStep = 16;                          ///< bytes of storage by which texts are told apart
constexpr std::size_t kLists = 17;                         ///< of storage up to 256 bytes
constexpr std::size_t kMostBytes = std::size_t{16} * 1024; ///< of one size

using Texts = std::vector<std::string>;

/// Has no destructor, so that every access is a plain one: `Closer` frees what is in it. The list at `i` is
/// of texts with at least `i * kStep` bytes of storage, the final null character's included.
struct Cache {
    Texts* lists = nullptr; ///< owned; null before the first text and after the last
    bool isOpened = false;  ///< and stays so when the thread has closed it
};

constinit thread_local Cache cache;

/// Frees the texts of a thread that ends.
struct Closer {
    Closer() = default;

    ~Closer() { delete[] std::exchange(cache.lists, nullptr); }

    Closer(const Closer&) = delete;
    Closer& operator=(const Closer&) = delete;
};

/// Prepares the thread for keeping texts, once; false when that can not be.
[[gnu::noinline]] bool Open() {
    if (!std::exchange(cache.isOpened, true)) {
        static thread_local const Closer closer;
        cache.lists = new (std::nothrow) Texts[kLists];
    }
    return cache.lists != nullptr;
}

} // namespace

void CopyLongText(std::string& to, const std::string& from) {
    const std::size_t index = from.size() / kStep + 1;
    if (index < kLists && to.capacity() < from.size()) {
        if (cache.lists != nullptr && !cache.lists[index].empty()) {
            to = std::move(cache.lists[index].back());
            cache.lists[index].pop_back();
        } else {
            to.reserve(index * kStep - 1);
        }
    }
    to = from;
}

void KeepText(std::string& text) noexcept {
    const std::size_t index = (text.capacity() + 1) / kStep;
    if (index >= kLists || (cache.lists == nullptr && !Open())) {
        return;
    }
    Texts& texts = cache.lists[index];
    if (texts.size() * index < kMostBytes / kStep) {
        try {
            texts.push_back(std::move(text));
        } catch (const std::bad_alloc&) { // then it is thrown away as any other text
        }
    }
}

void ReleaseCachedTexts() noexcept {
    for (std::size_t i = 0; cache.lists != nullptr && i < kLists; ++i) {
        Texts().swap(cache.lists[i]);
    }
}

#else

void CopyLongText(std::string& to, const std::string& from) {
    to = from;
}

void KeepText(std::string& /*text*/) noexcept {}

void ReleaseCachedTexts() noexcept {}

#endif

} // namespace Pellum
