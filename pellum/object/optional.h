#pragma once

#include "pellum/object/block_cache.h"
#include "pellum/text/text_cache.h"

#include <cassert>
#include <concepts>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Pellum {

/// A value that may be unset, in the storage form of optional properties: the value followed by a one-byte
/// set mark.
///
/// `Optional<bool>` and `Optional<std::string>` have storage forms of their own, below. All three forms offer
/// the same operations. Not synchronised.
template <typename T>
class Optional {
    static_assert(
        std::is_object_v<T> && !std::is_const_v<T>, "an optional value is a plain, non-const object");

public:
    using ValueType = T;

    /// Unset; the value behind the mark is value-initialised.
    Optional() = default;

    Optional(const T& value) : m_value(value), m_set(1) {}

    Optional(T&& value) noexcept(std::is_nothrow_move_constructible_v<T>)
        : m_value(std::move(value)), m_set(1) {}

    /// Copies the mark, and the value only when it is set.
    Optional(const Optional& other) { *this = other; }

    Optional& operator=(const Optional& other) {
        if (other.IsSet()) {
            m_value = other.m_value;
        }
        m_set = other.m_set;
        return *this;
    }

    ~Optional() = default;

    [[nodiscard]] bool IsSet() const noexcept { return m_set != 0; }

    explicit operator bool() const noexcept { return IsSet(); }

    /// The value. Precondition: `IsSet()`.
    [[nodiscard]] const T& GetValue() const noexcept {
        assert(IsSet());
        return m_value;
    }

    /// The value, borrowed until the next change; null when unset.
    [[nodiscard]] const T* Peek() const noexcept { return IsSet() ? &m_value : nullptr; }

    [[nodiscard]] T ValueOr(T fallback) const { return IsSet() ? m_value : std::move(fallback); }

    void SetValue(T value) {
        m_value = std::move(value);
        m_set = 1;
    }

    /// Clears the mark and leaves the old value in place.
    void Unset() noexcept { m_set = 0; }

    void Swap(Optional& other) noexcept(std::is_nothrow_swappable_v<T>) {
        using std::swap;
        swap(m_value, other.m_value);
        swap(m_set, other.m_set);
    }

    friend bool operator==(const Optional& left, const Optional& right) {
        return left.IsSet() ? right.IsSet() && left.m_value == right.m_value : !right.IsSet();
    }

private:
    T m_value{};
    std::uint8_t m_set = 0;
};

/// An optional boolean: exactly one signed byte, 0 for false, 1 for true, negative (stored as 0xFF) for
/// unset.
template <>
class Optional<bool> {
public:
    using ValueType = bool;

    /// Unset.
    Optional() noexcept = default;

    /// Takes a `bool` and nothing that merely converts to one, such as a pointer.
    template <std::same_as<bool> Bool>
    Optional(Bool value) noexcept {
        SetValue(value);
    }

    [[nodiscard]] bool IsSet() const noexcept { return static_cast<std::int8_t>(m_state[0]) >= 0; }

    /// `if (optional)` would ask whether it is set where the value is meant: say `IsSet()` or `ValueOr(...)`.
    explicit operator bool() const = delete;

    /// The value. Precondition: `IsSet()`.
    [[nodiscard]] bool GetValue() const noexcept {
        assert(IsSet());
        return m_state[0] != 0;
    }

    /// The value, borrowed until the next change; null when unset.
    [[nodiscard]] const bool* Peek() const noexcept {
        return IsSet() ? std::launder(reinterpret_cast<const bool*>(&m_state)) : nullptr;
    }

    [[nodiscard]] bool ValueOr(bool fallback) const noexcept { return IsSet() ? GetValue() : fallback; }

    void SetValue(bool value) noexcept { ::new (&m_state) bool(value); }

    void Unset() noexcept { m_state[0] = kUnset; }

    void Swap(Optional& other) noexcept { std::swap(m_state[0], other.m_state[0]); }

    friend bool operator==(const Optional& left, const Optional& right) noexcept {
        return left.IsSet() ? right.IsSet() && left.GetValue() == right.GetValue() : !right.IsSet();
    }

private:
    static_assert(sizeof(bool) == 1);
    static constexpr unsigned char kUnset = 0xFF;

    // Bytes that give room to a `bool`, so that `Peek` points at a real one.
    unsigned char m_state[1] = {kUnset};
};

/// An optional string: exactly one pointer to a separately allocated string, null for unset.
template <>
class Optional<std::string> {
public:
    using ValueType = std::string;

    /// Unset.
    Optional() noexcept = default;

    Optional(std::string value) : m_value(Make(std::move(value))) {}

    Optional(const char* value) : Optional(std::string(value)) {}

    /// Unset, as null is elsewhere.
    Optional(std::nullptr_t) noexcept {}

    Optional(const Optional& other) : m_value(other.IsSet() ? Make(*other.m_value) : nullptr) {}

    Optional(Optional&& other) noexcept = default;

    Optional& operator=(const Optional& other) {
        if (!other.IsSet()) {
            Unset();
        } else {
            SetValue(*other.m_value);
        }
        return *this;
    }

    Optional& operator=(Optional&& other) noexcept = default;

    ~Optional() = default;

    [[nodiscard]] bool IsSet() const noexcept { return m_value != nullptr; }

    explicit operator bool() const noexcept { return IsSet(); }

    /// The string. Precondition: `IsSet()`.
    [[nodiscard]] const std::string& GetValue() const noexcept {
        assert(IsSet());
        return *m_value;
    }

    /// The string, borrowed until the next change; null when unset.
    [[nodiscard]] const std::string* Peek() const noexcept { return m_value.get(); }

    [[nodiscard]] std::string ValueOr(std::string fallback) const {
        return IsSet() ? *m_value : std::move(fallback);
    }

    /// Assigns into the held string, or creates it.
    void SetValue(const std::string& value) {
        if (IsSet()) {
            *m_value = value;
        } else {
            m_value = Make(value);
        }
    }

    void SetValue(std::string&& value) {
        if (IsSet()) {
            *m_value = std::move(value);
        } else {
            m_value = Make(std::move(value));
        }
    }

    /// Takes a `std::string_view` and nothing that merely converts to one, which may as well convert to a
    /// string.
    template <std::same_as<std::string_view> View>
    void SetValue(View value) {
        if (IsSet()) {
            *m_value = value;
        } else {
            m_value = Make(value);
        }
    }

    void SetValue(const char* value) { SetValue(std::string(value)); }

    /// Clears the pointer, then frees the string.
    void Unset() noexcept { m_value.reset(); }

    void Swap(Optional& other) noexcept { m_value.swap(other.m_value); }

    friend bool operator==(const Optional& left, const Optional& right) noexcept {
        return left.IsSet() ? right.IsSet() && *left.m_value == *right.m_value : !right.IsSet();
    }

private:
    struct Free {
        void operator()(std::string* value) const noexcept {
            RecycleTexts(*value);
            value->~basic_string();
            FreeBlock(value, sizeof(std::string));
        }
    };

    using Pointer = std::unique_ptr<std::string, Free>;

    static Pointer MakeEmpty() {
        void* const block = AllocateBlock(sizeof(std::string));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return Pointer(::new (block) std::string);
    }

    template <class Text>
    static Pointer Make(const Text& value) {
        Pointer made = MakeEmpty();
        CopyText(*made, value);
        return made;
    }

    static Pointer Make(std::string&& value) {
        Pointer made = MakeEmpty();
        *made = std::move(value);
        return made;
    }

    Pointer m_value;
};

template <typename T>
void swap(Optional<T>& left, Optional<T>& right) noexcept(noexcept(left.Swap(right))) {
    left.Swap(right);
}

static_assert(sizeof(Optional<std::int8_t>) == 2);
static_assert(sizeof(Optional<std::int32_t>) == 8);
static_assert(sizeof(Optional<bool>) == 1);
static_assert(sizeof(Optional<std::string>) == sizeof(void*));

} // namespace Pellum
