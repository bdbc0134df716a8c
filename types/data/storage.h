#pragma once

#include "pellum/object/optional.h"
#include "pellum/object/ref.h"
#include "tavik/value/array_base.h"
#include "tavik/value/clone.h"
#include "tavik/value/ref_slot.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

/// The operations on a member of a data object, once for every form in which a property is stored.
namespace Morvane::Support {

/// Checks the class of a value for a reference; throws `Pellum::TypeMismatchException`.
using ClassCheck = void (*)(Tavik::Any* value);

/// All pointers to members and plain values are untyped: the form that the table belongs to says what they
/// point to.
struct StorageOps {
    /// Copies the plain value to `*out`; for references counted.
    void (*get)(const void* member, void* out);
    /// Address of the plain value, or the held pointer; null when unset.
    const void* (*pointer)(const void* member);
    /// Assigns the plain value at `in`; for references `in` is the object, checked by `check` first.
    void (*set)(void* member, const void* in, ClassCheck check);
    /// Exchanges with a member of the same form.
    void (*swap)(void* member, void* other);
    bool (*isSet)(const void* member);
    /// Makes the member unset; null for forms that are always set.
    void (*reset)(void* member);
    /// Deep copy into a default-constructed member.
    void (*copy)(void* member, const void* source);
    /// Whether both are unset or equal; null for references, which the runtime compares.
    bool (*equal)(const void* a, const void* b);
};

/// Numbers, booleans and enumeration values, which may hold anything before they are set: moved as bytes.
template <class T>
struct TrivialStorage {
    static void Get(const void* member, void* out) { std::memcpy(out, member, sizeof(T)); }

    static const void* Pointer(const void* member) { return member; }

    static void Set(void* member, const void* in, ClassCheck /*check*/) {
        std::memcpy(member, in, sizeof(T));
    }

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

    static constexpr StorageOps kOps = {&Get, &Pointer, &Set, &Swap, &IsSet, nullptr, &Copy, &Equal};
};

/// Values with a constructor of their own: strings, date-times, bytes.
template <class T>
struct InlineStorage {
    static const T& As(const void* member) { return *static_cast<const T*>(member); }

    static T& As(void* member) { return *static_cast<T*>(member); }

    static void Get(const void* member, void* out) { As(out) = As(member); }

    static const void* Pointer(const void* member) { return member; }

    static void Set(void* member, const void* in, ClassCheck /*check*/) { As(member) = As(in); }

    static void Swap(void* member, void* other) { std::swap(As(member), As(other)); }

    static bool IsSet(const void* /*member*/) { return true; }

    static void Copy(void* member, const void* source) { As(member) = As(source); }

    static bool Equal(const void* a, const void* b) { return As(a) == As(b); }

    static constexpr StorageOps kOps = {&Get, &Pointer, &Set, &Swap, &IsSet, nullptr, &Copy, &Equal};
};

/// Optional values of all three forms.
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
            *static_cast<std::string*>(out) = *As(member).Peek();
        } else {
            *static_cast<T*>(out) = *static_cast<const T*>(member);
        }
    }

    static const void* Pointer(const void* member) { return As(member).Peek(); }

    static void Set(void* member, const void* in, ClassCheck /*check*/) {
        As(member).SetValue(*static_cast<const T*>(in));
    }

    static void Swap(void* member, void* other) { As(member).Swap(As(other)); }

    static bool IsSet(const void* member) { return As(member).IsSet(); }

    static void Reset(void* member) { As(member).Unset(); }

    static void Copy(void* member, const void* source) { As(member) = As(source); }

    static bool Equal(const void* a, const void* b) { return As(a) == As(b); }

    static constexpr StorageOps kOps = {&Get, &Pointer, &Set, &Swap, &IsSet, &Reset, &Copy, &Equal};
};

/// Optional enumeration values: the 32-bit number, then the set mark, for every enumeration alike.
struct OptionalEnumStorage {
    static constexpr std::size_t kMark = sizeof(std::int32_t);
    static constexpr std::size_t kSize = kMark + 1;

    static void Get(const void* member, void* out) { std::memcpy(out, member, kMark); }

    static const void* Pointer(const void* member) { return IsSet(member) ? member : nullptr; }

    static void Set(void* member, const void* in, ClassCheck /*check*/) {
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
        return IsSet(a) == IsSet(b) && (!IsSet(a) || std::memcmp(a, b, kMark) == 0);
    }

    static void SetMark(void* member, unsigned char mark) {
        static_cast<unsigned char*>(member)[kMark] = mark;
    }

    static constexpr StorageOps kOps = {&Get, &Pointer, &Set, &Swap, &IsSet, &Reset, &Copy, &Equal};
};

/// Counted references to data objects, managed references and boxed values.
struct RefStorage {
    static void Get(const void* member, void* out) { Tavik::StoreRef(out, Tavik::LoadRef(member)); }

    static const void* Pointer(const void* member) { return Tavik::LoadRef(member); }

    static void Set(void* member, const void* in, ClassCheck check) {
        auto* value = const_cast<Tavik::Any*>(static_cast<const Tavik::Any*>(in));
        check(value);
        Tavik::StoreRef(member, value);
    }

    static void Swap(void* member, void* other) {
        Tavik::Any* held = Tavik::LoadRef(member);
        std::memcpy(member, other, sizeof(void*));
        std::memcpy(other, &held, sizeof(void*));
    }

    static bool IsSet(const void* member) { return Tavik::LoadRef(member) != nullptr; }

    static void Reset(void* member) { Tavik::StoreRef(member, nullptr); }

    static void Copy(void* member, const void* source) { Tavik::CloneInto(member, Tavik::LoadRef(source)); }

    static constexpr StorageOps kOps = {&Get, &Pointer, &Set, &Swap, &IsSet, &Reset, &Copy, nullptr};
};

/// Counted references to arrays, which are unset when empty, too.
struct ArrayStorage {
    static const void* Pointer(const void* member) {
        const auto* array = static_cast<const Tavik::ArrayBase*>(Tavik::LoadRef(member));
        return array == nullptr || array->IsEmpty() ? nullptr : static_cast<const Tavik::Any*>(array);
    }

    static bool IsSet(const void* member) { return Pointer(member) != nullptr; }

    static constexpr StorageOps kOps = {&RefStorage::Get,  &Pointer, &RefStorage::Set,
                                        &RefStorage::Swap, &IsSet,   &RefStorage::Reset,
                                        &RefStorage::Copy, nullptr};
};

/// Chooses the form of a member by its C++ type.
template <class Member>
struct StorageOf {
    using Ops =
        std::conditional_t<std::is_arithmetic_v<Member>, TrivialStorage<Member>, InlineStorage<Member>>;
};
template <class Member>
requires std::is_enum_v<Member>

struct StorageOf<Member> {
    using Ops = TrivialStorage<std::int32_t>;
};

template <class T>
struct StorageOf<Pellum::Optional<T>> {
    using Ops = OptionalStorage<T>;
};
template <class T>
requires std::is_enum_v<T>

struct StorageOf<Pellum::Optional<T>> {
    static_assert(sizeof(T) == sizeof(std::int32_t));
    using Ops = OptionalEnumStorage;
};

template <class T>
struct StorageOf<Pellum::Ref<T>> {
    using Ops = std::conditional_t<std::is_base_of_v<Tavik::ArrayBase, T>, ArrayStorage, RefStorage>;
};

} // namespace Morvane::Support
