#pragma once

/// The one header that generated headers stand on.

#include "pellum/object/optional.h"        // IWYU pragma: export
#include "pellum/object/ref.h"             // IWYU pragma: export
#include "pellum/system/date_time.h"       // IWYU pragma: export
#include "tavik/descriptor/records.h"      // IWYU pragma: export
#include "tavik/fault/method_fault.h"      // IWYU pragma: export
#include "tavik/type/data_object_type.h"   // IWYU pragma: export
#include "tavik/type/type_of.h"            // IWYU pragma: export
#include "tavik/value/copy_properties.h"   // IWYU pragma: export
#include "tavik/value/data_array.h"        // IWYU pragma: export
#include "tavik/value/data_object.h"       // IWYU pragma: export
#include "tavik/value/mo_ref.h"            // IWYU pragma: export
#include "tavik/value/property_diff_set.h" // IWYU pragma: export
#include "tavik/value/scalar_array.h"      // IWYU pragma: export
#include "tavik/value/text_values.h"       // IWYU pragma: export

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace Morvane::Support {

/// The field table of a generated class; specialised beside the class's other definitions and nowhere else.
template <class T>
struct ClassTraits;

/// Copies the value of a set optional to `out`; whether it was set.
template <class T>
bool GetOptional(const Pellum::Optional<T>& member, T& out) {
    const T* value = member.Peek();
    if (value != nullptr) {
        out = *value;
    }
    return value != nullptr;
}

/// The array of a property, borrowed; null when it is absent or empty.
template <class A>
const A* PeekArray(const Pellum::Ref<A>& member) {
    return member && !member->IsEmpty() ? member.Get() : nullptr;
}

/// Zero-fills raw storage so that the zeros outlast the construction that follows.
template <class T>
void ZeroFill(T* storage, std::size_t size) {
    std::memset(static_cast<void*>(storage), 0, size);
    static_cast<void>(Tavik::KeepStorage(storage));
}

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
/// zero on the heap. Objects are counted (see `Tavik::Any`). The copy constructor makes a deep copy, for
/// classes that derive from this one.
/// `__autoclassinit2` zero-fills the first `size` bytes of storage before an object is constructed there.
#define TYPES_FAULT_OBJECT(Class)                                                                            \
public:                                                                                                      \
    Class();                                                                                                 \
    ~Class() override;                                                                                       \
    inline Tavik::Type* _GetType() const override;                                                           \
    Class* _Clone() const override;                                                                          \
    bool _IsEqual(const Tavik::Any* other, bool partial) const override;                                     \
    inline Tavik::DataObjectType* _GetDataType() const override;                                             \
    void __autoclassinit2(std::size_t size) {                                                                \
        Morvane::Support::ZeroFill(this, size);                                                              \
    }                                                                                                        \
                                                                                                             \
protected:                                                                                                   \
    inline Class(const Class& other);                                                                        \
                                                                                                             \
private:                                                                                                     \
    friend struct Morvane::Support::ClassTraits<Class>;                                                      \
                                                                                                             \
public:

/// What every data class has beside its accessors: the same, and a difference of its own where faults use the
/// runtime's.
#define TYPES_DATA_OBJECT(Class)                                                                             \
    TYPES_FAULT_OBJECT(Class)                                                                                \
    void _DiffProperties(const Tavik::Any* other, const std::string& prefix, Tavik::PropertyDiffSet& diffs)  \
        const override;

/// What stands behind the classes of a header, once for each data and fault class: its registered type, what
/// needs to know it, and the array of such objects, which belongs to the library that has the class.
#define TYPES_DATA_TYPE(API, Class, Name)                                                                    \
    template <>                                                                                              \
    API Tavik::DataObjectType* Tavik::GetDoType<Class>();                                                    \
    inline Tavik::Type* Class::_GetType() const {                                                            \
        return Tavik::GetDoType<Class>();                                                                    \
    }                                                                                                        \
    inline Tavik::DataObjectType* Class::_GetDataType() const {                                              \
        return Tavik::GetDoType<Class>();                                                                    \
    }                                                                                                        \
    inline Class::Name(const Name& other) : Name() {                                                         \
        Tavik::CopyProperties(&Tavik::GetDoType<Class>, *this, other);                                       \
    }                                                                                                        \
    TAVIK_DECLARE_INSTANTIATION(API, Tavik::DataArray<Class>)

// NOLINTEND(bugprone-macro-parentheses)
