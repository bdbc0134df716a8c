#include "tavik/value/compare.h"

#include "tavik/descriptor/records.h"
#include "tavik/value/any.h"
#include "tavik/value/array_base.h"
#include "tavik/value/depth_scope.h"
#include "tavik/value/property_diff_set.h"

#include <cstring>
#include <typeinfo>
#include <utility>

namespace Tavik {

namespace {

struct PendingEquality {
    const Any* a;
    const Any* b;
    bool partial;
};

struct PendingDifference {
    const Any* a;
    const Any* b;
    std::string path;
};

constinit thread_local RecursionState<PendingEquality> equality;
constinit thread_local RecursionState<PendingDifference> difference;

/// The extent of one comparison. The outermost one forgets what it has not come to, also when it throws.
template <class State>
class ComparisonScope {
public:
    explicit ComparisonScope(State& state) : m_state(state), m_depth(state.depth) {}

    ~ComparisonScope() {
        if (m_state.pending != nullptr && IsOutermost()) {
            m_state.Free();
        }
    }

    ComparisonScope(const ComparisonScope&) = delete;
    ComparisonScope& operator=(const ComparisonScope&) = delete;

    bool IsOutermost() const { return m_depth.IsOutermost(); }

private:
    State& m_state;
    DepthScope m_depth;
};

bool IsUnset(const Any* value, std::uint32_t flags) {
    return value == nullptr
        || ((flags & kArrayFlag) != 0 && static_cast<const ArrayBase*>(value)->GetLength() == 0);
}

/// Whether two values have the same table of virtual functions.
bool HaveSameFunctions(const Any* a, const Any* b) {
    return std::memcmp(static_cast<const void*>(a), static_cast<const void*>(b), sizeof(void*)) == 0;
}

bool AreSameClass(const Any* a, const Any* b) {
    return HaveSameFunctions(a, b) || typeid(*a) == typeid(*b);
}

/// Compares what was put off. All parts must be equal, in whatever order they are looked at.
[[gnu::noinline]] bool ArePendingEqual() {
    bool equal = true;
    while (equal && equality.CountPending() > 0) {
        const PendingEquality next = equality.TakeLast();
        equal = next.a->_IsEqual(next.b, next.partial);
    }
    return equal;
}

/// Compares two values of the same class. The outermost call compares what the others have put off.
[[gnu::noinline]] bool AreSameContent(const Any* a, const Any* b, bool partial) {
    if (equality.depth == kMaxRecursion) {
        equality.PutOff({a, b, partial});
        return true;
    }
    const ComparisonScope scope(equality);
    return a->_IsEqual(b, partial)
        && (equality.pending == nullptr || !scope.IsOutermost() || ArePendingEqual());
}

/// What `AreEqualAnysInt` answers; out of the way of the usual case there.
[[gnu::noinline]] bool AreEqualValues(const Any* a, const Any* b, std::uint32_t flags, bool partial) {
    const bool unsetB = IsUnset(b, flags);
    if (unsetB && partial && (flags & kOptionalFlag) != 0) {
        return true;
    }
    const bool unsetA = IsUnset(a, flags);
    if (unsetA || unsetB) {
        return unsetA == unsetB;
    }
    return AreSameClass(a, b) && AreSameContent(a, b, partial);
}

} // namespace

bool AreEqualAnysInt(const Any* a, const Any* b, std::uint32_t flags, bool partial) {
    if (a == b) {
        return true;
    }
    // Most calls are for a part of something that is being compared, with values of one class; whether an
    // array is empty does not matter then but for a partial match.
    const bool mayBeUnset = a == nullptr || b == nullptr || (partial && (flags & kArrayFlag) != 0);
    if (mayBeUnset || !HaveSameFunctions(a, b)) {
        return AreEqualValues(a, b, flags, partial);
    }
    if (equality.depth == 0 || equality.depth == kMaxRecursion) {
        return AreSameContent(a, b, partial);
    }
    const DepthScope depth(equality.depth);
    return a->_IsEqual(b, partial);
}

void DiffAnyPropertiesInt(
    const Any* a, const Any* b, const std::string& prefix, const char* suffix, std::uint32_t flags,
    PropertyDiffSet& diffs) {
    if (a != b) {
        DiffValues(a, b, prefix + suffix, flags, diffs);
    }
}

void DiffValues(
    const Any* a, const Any* b, const std::string& path, std::uint32_t flags, PropertyDiffSet& diffs) {
    const bool unsetA = IsUnset(a, flags);
    const bool unsetB = IsUnset(b, flags);
    if ((unsetA && unsetB) || a == b) {
        return;
    }
    if (unsetA || unsetB || !AreSameClass(a, b)) {
        diffs.Add(path);
        return;
    }
    if (difference.depth == kMaxRecursion) {
        difference.PutOff({a, b, path});
        return;
    }
    const ComparisonScope scope(difference);
    a->_DiffProperties(b, path, diffs);
    if (scope.IsOutermost()) {
        while (difference.CountPending() > 0) {
            const PendingDifference next = difference.TakeLast();
            next.a->_DiffProperties(next.b, next.path, diffs);
        }
    }
}

} // namespace Tavik
