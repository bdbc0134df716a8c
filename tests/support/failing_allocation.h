#pragma once

#include <cstddef>

namespace TestSupport {

/// Number of blocks that the program has allocated with `operator new` and not freed.
std::ptrdiff_t CountLiveBlocks();

/// While it lives, the `count`th allocation of this thread (from 1) fails once. Not nested.
class FailingAllocation {
public:
    explicit FailingAllocation(int count);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether there were as many allocations.
    bool HasFailed() const;
};

} // namespace TestSupport
