#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace Tavik {

/// Nesting at which recursive operations on values stop recursing and put the rest off to the outermost call.
inline constexpr int kMaxRecursion = 64;

/// What one thread has put off of one recursive operation. It has no destructor, so that every access to a
/// thread's own is a plain one; the outermost call frees the list.
template <class Pending>
struct RecursionState {
    int depth = 0;
    std::vector<Pending>* pending = nullptr; ///< owned; null until something is put off

    std::size_t CountPending() const noexcept { return pending == nullptr ? 0 : pending->size(); }

    void PutOff(Pending next) {
        if (pending == nullptr) {
            pending = new std::vector<Pending>;
        }
        pending->push_back(std::move(next));
    }

    Pending TakeLast() {
        Pending last = std::move(pending->back());
        pending->pop_back();
        return last;
    }

    /// Forgets what was put off when there were `count`.
    void Forget(std::size_t count) noexcept {
        while (CountPending() > count) {
            pending->pop_back();
        }
    }

    void Free() noexcept { delete std::exchange(pending, nullptr); }
};

/// Counts one level of nesting for as long as it lives.
class DepthScope {
public:
    explicit DepthScope(int& depth) noexcept : m_depth(depth) { ++m_depth; }

    ~DepthScope() { --m_depth; }

    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;

    bool IsOutermost() const noexcept { return m_depth == 1; }

private:
    int& m_depth;
};

} // namespace Tavik
