#pragma once

/// Where the schema compiler looks for the class of `orlin.tavik`'s `InvalidArgument`.

#include "tavik/fault/runtime_faults.h" // IWYU pragma: export
