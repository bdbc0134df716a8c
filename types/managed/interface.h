#pragma once

/// The one header that generated interfaces of managed objects stand on.

#include "pellum/object/optional.h"       // IWYU pragma: export
#include "pellum/object/ref.h"            // IWYU pragma: export
#include "pellum/system/date_time.h"      // IWYU pragma: export
#include "tavik/descriptor/records.h"     // IWYU pragma: export
#include "tavik/managed/managed_object.h" // IWYU pragma: export
#include "tavik/type/type_of.h"           // IWYU pragma: export
#include "tavik/value/text_values.h"      // IWYU pragma: export

#include <cstdint>
#include <string>
#include <vector>

namespace Tavik {

template <class T>
class Array;
template <class T>
class DataArray;

} // namespace Tavik

/// How calls look, in every generated interface and stub: objects, arrays and references that are passed are
/// borrowed for the call and null when they are absent; a result of such a kind comes in the last parameter,
/// which holds a count of it, or null when there is none. An interface's method throws what its comment names
/// as the fault's own `Exception`.

// NOLINTBEGIN(bugprone-macro-parentheses): a class name in declarations takes none.

/// What every interface has behind its methods. It has no data, so that a copy copies nothing.
#define TYPES_INTERFACE(Class)                                                                               \
public:                                                                                                      \
    Class() = default;                                                                                       \
    Class(const Class&) = default;                                                                           \
    Class& operator=(const Class&) = default;                                                                \
    [[nodiscard]] Tavik::ManagedObjectType* _GetType() const override;                                       \
                                                                                                             \
protected:                                                                                                   \
    ~Class() override;

// NOLINTEND(bugprone-macro-parentheses)
