#pragma once

/// The one header that generated headers stand on.

#include "pellum/object/optional.h"        // IWYU pragma: export
#include "pellum/object/ref.h"             // IWYU pragma: export
#include "pellum/system/date_time.h"       // IWYU pragma: export
#include "tavik/descriptor/records.h"      // IWYU pragma: export
#include "tavik/fault/method_fault.h"      // IWYU pragma: export
#include "tavik/type/type_of.h"            // IWYU pragma: export
#include "tavik/value/data_array.h"        // IWYU pragma: export
#include "tavik/value/data_object.h"       // IWYU pragma: export
#include "tavik/value/mo_ref.h"            // IWYU pragma: export
#include "tavik/value/property_diff_set.h" // IWYU pragma: export
#include "tavik/value/scalar_array.h"      // IWYU pragma: export
#include "tavik/value/text_values.h"       // IWYU pragma: export

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Morvane::Support {

/// The field table of a generated class; specialised beside the class's other definitions and nowhere else.
template <class T>
struct ClassTraits;

} // namespace Morvane::Support

/// Accessors of a property, in every generated class: pointers that `Get`, `GetPtr` and `Peek` return are
/// borrowed from the object; `Set` takes a count of the object or array that it is given, `Swap` exchanges
/// counts. `Peek` is null for what is unset, an empty array included. `Get` of an array makes the array when
/// there is none, also through a const object: two threads that read one object must use `Peek`. No accessor
/// checks anything or throws, but for lack of memory.

// NOLINTBEGIN(bugprone-macro-parentheses): a class name in declarations takes none.

/// What every fault class has beside its accessors.
///
/// The default constructor leaves required numbers, booleans and enumeration values as the storage held them:
/// zero on the heap. Objects are counted (see `Tavik::Any`); the copy constructor makes a deep copy and
/// serves `_Clone`.
/// `__autoclassinit2` zero-fills the first `size` bytes of storage before an object is constructed there.
#define TYPES_FAULT_OBJECT(Class)                                                                            \
public:                                                                                                      \
    Class();                                                                                                 \
    ~Class() override;                                                                                       \
    Tavik::Type* _GetType() const override;                                                                  \
    Class* _Clone() const override;                                                                          \
    bool _IsEqual(const Tavik::Any* other, bool partial) const override;                                     \
    Tavik::DataObjectType* _GetDataType() const override;                                                    \
    void __autoclassinit2(std::size_t size);                                                                 \
                                                                                                             \
protected:                                                                                                   \
    Class(const Class& other);                                                                               \
                                                                                                             \
private:                                                                                                     \
    friend struct Tavik::ObjectCloner;                                                                       \
    friend struct Morvane::Support::ClassTraits<Class>;                                                      \
                                                                                                             \
public:

/// What every data class has beside its accessors: the same, and a difference of its own where faults use the
/// runtime's.
#define TYPES_DATA_OBJECT(Class)                                                                             \
    TYPES_FAULT_OBJECT(Class)                                                                                \
    void _DiffProperties(const Tavik::Any* other, const std::string& prefix, Tavik::PropertyDiffSet& diffs)  \
        const override;

// NOLINTEND(bugprone-macro-parentheses)
