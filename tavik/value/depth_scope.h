#pragma once

namespace Tavik {

/// Nesting at which recursive operations on values stop recursing and put the rest off to the outermost call.
inline constexpr int kMaxRecursion = 64;

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
