#pragma once

/// The one header that generated stubs stand on.

#include "tavik/managed/stub_adapter.h" // IWYU pragma: export
#include "tavik/managed/stub_impl.h"    // IWYU pragma: export
#include "tavik/value/data_array.h"     // IWYU pragma: export
#include "tavik/value/mo_ref.h"         // IWYU pragma: export
#include "tavik/value/scalar_array.h"   // IWYU pragma: export

/// How stubs behave, all alike: a method in its first form calls and waits; it throws what the server threw,
/// what the adapter throws when the call could not be carried, and `Pellum::TypeMismatchException` for a
/// result of another class than the declared one. The second form starts the call and returns: how it ends is
/// told to `completion`, with the result as it came, and `item` then stands for the call. Both may be called
/// from any thread.
