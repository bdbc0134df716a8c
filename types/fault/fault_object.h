#pragma once

/// What generated fault classes stand on, beside what all data classes do.

#include "pellum/object/ref.h"
#include "tavik/fault/method_fault.h" // IWYU pragma: export

namespace Morvane::Support {

/// First argument of the constructor that takes a fault's properties, where without it the constructor could
/// not be told from the one that takes the fault.
struct FromProperties {};

inline constexpr FromProperties kFromProperties;

/// A new fault, filled by `fill(fault)`.
template <class F, class Fill>
Pellum::Ref<F> MakeFault(Fill fill) {
    Pellum::Ref<F> fault(new F);
    fill(*fault);
    return fault;
}

} // namespace Morvane::Support
