#pragma once

#include "pellum/object/optional.h"
#include "pellum/object/ref.h"
#include "pellum/system/date_time.h"
#include "pellum/text/equal.h"
#include "pellum/text/text_cache.h"
#include "tavik/descriptor/field_layout.h"
#include "tavik/value/array_base.h"
#include "tavik/value/clone.h"
#include "tavik/value/ref_slot.h"
#include "tavik/value/text_values.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// The operations on a member of a data object, once for every form in which a property is stored. A member
/// and a plain value are untyped pointers: the form says what they point to.
///
///     Get      copies the plain value to `*out`; for references counted
///     Pointer  address of the plain value, or the held pointer; null when unset
///     Set      assigns the plain value at `in`; for references `in` is the object itself
///     Swap     exchanges with a member of the same form
///     IsSet    whether there is a value; forms that are not optional always have one
///     Reset    makes the member unset; forms that are not optional have none
///     Copy     deep copy into a default-constructed member
///     Equal    whether both are unset or equal; references have none, as the runtime compares them
namespace Tavik {

/// Copies a text to one that is most often new, for which there is less to do than to make room in it.
inline void CopyOut(std::string& out, const std::string& text) {
    if (out.capacity() <= Pellum::kShortText && text.size() > Pellum::kShortText) {
        Pellum::ReplaceText(out, std::string(text));
    } else {
        out = text;
    }
}

/// Numbers, booleans and enumeration values, which may hold anything before they are set: moved as bytes.
template <class T>
struct TrivialStorage {
    static void Get(const void* member, void* out) { std::memcpy(out, member, sizeof(T)); }

    static const void* Pointer(const void* member) { return member; }

    static void Set(void* member, const void* in) { std::memcpy(member, in, sizeof(T)); }

    static void Swap(void* member, void* other) {
        unsigned char held[sizeof(T)];
        std::memcpy(held, member, sizeof(T));
        std::memcpy(member, other, sizeof(T));
        std::memcpy(other, held, sizeof(T));
    }

    static bool IsSet(const void* /*member*/) { return true; }

    static void Copy(void* member, const void* source) { std::memcpy(member, source, sizeof(T)); }

    static bool Equal(const void* a, const void* b) {
        if constexpr (std::is_floating_point_v<T>) {
            return *static_cast<const T*>(a) == *static_cast<const T*>(b);
        } else {
            return std::memcmp(a, b, sizeof(T)) == 0;
        }
    }
};

/// Values with a constructor of their own: strings, date-times, bytes.
template <class T>
struct InlineStorage {
    static const T& As(const void* member) { return *static_cast<const T*>(member); }

    static T& As(void* member) { return *static_cast<T*>(member); }

    static void Get(const void* member, void* out) {
        if constexpr (std::is_same_v<T, std::string>) {
            CopyOut(As(out), As(member));
        } else {
            As(out) = As(member);
        }
    }

    static const void* Pointer(const void* member) { return member; }

    static void Set(void* member, const void* in) { As(member) = As(in); }

    static void Swap(void* member, void* other) { std::swap(As(member), As(other)); }

    static bool IsSet(const void* /*member*/) { return true; }

    static void Copy(void* member, const void* source) { As(member) = As(source); }

    static bool Equal(const void* a, const void* b) {
        if constexpr (std::is_same_v<T, std::string>) {
            return Pellum::AreEqual(As(a), As(b));
        } else {
            return As(a) == As(b);
        }
    }
};

/// Optional values of all three forms of `Pellum::Optional`.
template <class T>
struct OptionalStorage {
    using Member = Pellum::Optional<T>;

    static const Member& As(const void* member) { return *static_cast<const Member*>(member); }

    static Member& As(void* member) { return *static_cast<Member*>(member); }

    /// Also copies the value behind the mark when that says unset; only a string must be set to be read.
    static void Get(const void* member, void* out) {
        if constexpr (std::is_same_v<T, bool>) {
            *static_cast<bool*>(out) = As(member).ValueOr(false);
        } else if constexpr (std::is_same_v<T, std::string>) {
            CopyOut(*static_cast<std::string*>(out), *As(member).Peek());
        } else {
            *static_cast<T*>(out) = *static_cast<const T*>(member);
        }
    }

    static const void* Pointer(const void* member) { return As(member).Peek(); }

    static void Set(void* member, const void* in) { As(member).SetValue(*static_cast<const T*>(in)); }

    static void Swap(void* member, void* other) { As(member).Swap(As(other)); }

    static bool IsSet(const void* member) { return As(member).IsSet(); }

    static void Reset(void* member) { As(member).Unset(); }

    static void Copy(void* member, const void* source) { As(member) = As(source); }

    static bool Equal(const void* a, const void* b) {
        if constexpr (std::is_same_v<T, std::string>) {
            const std::string* const left = As(a).Peek();
            const std::string* const right = As(b).Peek();
            return left == nullptr || right == nullptr ? left == right : Pellum::AreEqual(*left, *right);
        } else {
            return As(a) == As(b);
        }
    }
};

/// Optional numbers and enumeration values as bytes: the number, then the set mark. One storage serves a
/// number and all enumerations, which are of other types in C++.
template <class T>
struct OptionalTrivialStorage {
    static constexpr std::size_t kMark = sizeof(T);
    static constexpr std::size_t kSize = kMark + 1;

    static void Get(const void* member, void* out) { std::memcpy(out, member, kMark); }

    static const void* Pointer(const void* member) { return IsSet(member) ? member : nullptr; }

    static void Set(void* member, const void* in) {
        std::memcpy(member, in, kMark);
        SetMark(member, 1);
    }

    static void Swap(void* member, void* other) {
        unsigned char held[kSize];
        std::memcpy(held, member, kSize);
        std::memcpy(member, other, kSize);
        std::memcpy(other, held, kSize);
    }

    static bool IsSet(const void* member) { return static_cast<const unsigned char*>(member)[kMark] != 0; }

    static void Reset(void* member) { SetMark(member, 0); }

    static void Copy(void* member, const void* source) { std::memcpy(member, source, kSize); }

    static bool Equal(const void* a, const void* b) {
        return IsSet(a) == IsSet(b) && (!IsSet(a) || TrivialStorage<T>::Equal(a, b));
    }

    static void SetMark(void* member, unsigned char mark) {
        static_cast<unsigned char*>(member)[kMark] = mark;
    }
};

/// Counted references to data objects, managed references and boxed values.
struct ObjectStorage {
    static void Get(const void* member, void* out) { StoreRef(out, LoadRef(member)); }

    static const void* Pointer(const void* member) { return LoadRef(member); }

    static void Set(void* member, const void* in) {
        StoreRef(member, const_cast<Any*>(static_cast<const Any*>(in)));
    }

    static void Swap(void* member, void* other) {
        Any* held = LoadRef(member);
        std::memcpy(member, other, sizeof(void*));
        std::memcpy(other, &held, sizeof(void*));
    }

    static bool IsSet(const void* member) { return LoadRef(member) != nullptr; }

    static void Reset(void* member) { StoreRef(member, nullptr); }

    static void Copy(void* member, const void* source) { CloneInto(member, LoadRef(source)); }
};

/// Counted references to arrays, which are unset when empty, too.
struct ArrayStorage : ObjectStorage {
    static const void* Pointer(const void* member) {
        const auto* array = static_cast<const ArrayBase*>(LoadRef(member));
        return array == nullptr || array->IsEmpty() ? nullptr : static_cast<const Any*>(array);
    }

    static bool IsSet(const void* member) { return Pointer(member) != nullptr; }
};

/// Whether a storage holds counted references.
template <class Storage>
inline constexpr bool kIsCounted = std::is_base_of_v<ObjectStorage, Storage>;

/// Calls `function` with the storage of `form`, which is not `Unknown`, and returns what it returns.
template <class Function>
decltype(auto) WithStorage(FieldForm form, Function function) {
    switch (form) {
    case FieldForm::Byte: return function(TrivialStorage<std::uint8_t>());
    case FieldForm::Int: return function(TrivialStorage<std::int32_t>());
    case FieldForm::Long: return function(TrivialStorage<std::int64_t>());
    case FieldForm::Float: return function(TrivialStorage<float>());
    case FieldForm::String: return function(InlineStorage<std::string>());
    case FieldForm::DateTime: return function(InlineStorage<Pellum::System::DateTime>());
    case FieldForm::Binary: return function(InlineStorage<std::vector<std::uint8_t>>());
    case FieldForm::TypeNameText: return function(InlineStorage<TypeName>());
    case FieldForm::PropertyPathText: return function(InlineStorage<PropertyPath>());
    case FieldForm::OptionalBoolean: return function(OptionalStorage<bool>());
    case FieldForm::OptionalByte: return function(OptionalTrivialStorage<std::uint8_t>());
    case FieldForm::OptionalInt: return function(OptionalTrivialStorage<std::int32_t>());
    case FieldForm::OptionalLong: return function(OptionalTrivialStorage<std::int64_t>());
    case FieldForm::OptionalFloat: return function(OptionalTrivialStorage<float>());
    case FieldForm::OptionalString: return function(OptionalStorage<std::string>());
    case FieldForm::OptionalDateTime: return function(OptionalStorage<Pellum::System::DateTime>());
    case FieldForm::OptionalBinary: return function(OptionalStorage<std::vector<std::uint8_t>>());
    case FieldForm::OptionalTypeNameText: return function(OptionalStorage<TypeName>());
    case FieldForm::OptionalPropertyPathText: return function(OptionalStorage<PropertyPath>());
    case FieldForm::Array: return function(ArrayStorage());
    case FieldForm::Object:
    case FieldForm::Unknown: break;
    }
    return function(ObjectStorage());
}

/// `Pointer` of whatever form but `Unknown`.
[[gnu::noinline]] inline const void* GetSeldomPointer(FieldForm form, const void* member) {
    return WithStorage(form, [member](auto storage) -> const void* { return storage.Pointer(member); });
}

/// The same. For the usual forms a few comparisons are less work than a jump through a table.
inline const void* GetPointer(FieldForm form, const void* member) {
    static_assert(FieldForm::Byte < FieldForm::PropertyPathText);
    static_assert(FieldForm::PropertyPathText < FieldForm::OptionalBoolean);
    static_assert(FieldForm::Array < FieldForm::OptionalString);
    static_assert(FieldForm::OptionalString < FieldForm::Object);
    if (form <= FieldForm::PropertyPathText) {
        return member;
    }
    if (form >= FieldForm::OptionalString) {
        return LoadRef(member); // a text is held by one pointer, too
    }
    if (form == FieldForm::OptionalInt) {
        return OptionalTrivialStorage<std::int32_t>::Pointer(member);
    }
    return GetSeldomPointer(form, member);
}

/// The form of a member by its C++ type.
template <class Member>
struct FieldFormOf;

template <class Member>
requires std::is_enum_v<Member>

struct FieldFormOf<Member> {
    static_assert(sizeof(Member) == sizeof(std::int32_t));
    static constexpr FieldForm kForm = FieldForm::Int;
};

template <class T>
requires std::is_enum_v<T>

struct FieldFormOf<Pellum::Optional<T>> {
    static_assert(sizeof(T) == sizeof(std::int32_t));
    static constexpr FieldForm kForm = FieldForm::OptionalInt;
};

template <class T>
struct FieldFormOf<Pellum::Ref<T>> {
    static constexpr FieldForm kForm = std::is_base_of_v<ArrayBase, T> ? FieldForm::Array : FieldForm::Object;
};

#define TAVIK_FIELD_FORM(Member, Form)                                                                       \
    template <>                                                                                              \
    struct FieldFormOf<Member> {                                                                             \
        static constexpr FieldForm kForm = FieldForm::Form;                                                  \
    }

TAVIK_FIELD_FORM(bool, Byte);
TAVIK_FIELD_FORM(signed char, Byte);
TAVIK_FIELD_FORM(std::int32_t, Int);
TAVIK_FIELD_FORM(std::int64_t, Long);
TAVIK_FIELD_FORM(float, Float);
TAVIK_FIELD_FORM(std::string, String);
TAVIK_FIELD_FORM(Pellum::System::DateTime, DateTime);
TAVIK_FIELD_FORM(std::vector<std::uint8_t>, Binary);
TAVIK_FIELD_FORM(TypeName, TypeNameText);
TAVIK_FIELD_FORM(PropertyPath, PropertyPathText);
TAVIK_FIELD_FORM(Pellum::Optional<bool>, OptionalBoolean);
TAVIK_FIELD_FORM(Pellum::Optional<signed char>, OptionalByte);
TAVIK_FIELD_FORM(Pellum::Optional<std::int32_t>, OptionalInt);
TAVIK_FIELD_FORM(Pellum::Optional<std::int64_t>, OptionalLong);
TAVIK_FIELD_FORM(Pellum::Optional<float>, OptionalFloat);
TAVIK_FIELD_FORM(Pellum::Optional<std::string>, OptionalString);
TAVIK_FIELD_FORM(Pellum::Optional<Pellum::System::DateTime>, OptionalDateTime);
TAVIK_FIELD_FORM(Pellum::Optional<std::vector<std::uint8_t>>, OptionalBinary);
TAVIK_FIELD_FORM(Pellum::Optional<TypeName>, OptionalTypeNameText);
TAVIK_FIELD_FORM(Pellum::Optional<PropertyPath>, OptionalPropertyPathText);
#undef TAVIK_FIELD_FORM

} // namespace Tavik
