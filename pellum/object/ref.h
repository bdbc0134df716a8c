#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <utility>

namespace Pellum {

/// A pointer to `From` is also a pointer to `To`.
template <typename From, typename To>
concept PointerConvertibleTo = std::convertible_to<From*, To*>;

/// Owner of one count of a reference-counted object; one pointer wide.
///
/// `T` offers `IncRef()` and `DecRef()`, callable on a const object. A new object has the count 0; the first
/// `Ref` raises it to 1, the last one to let go destroys the object. `T` may be incomplete where a `Ref<T>`
/// is declared, a class member for example; it must be complete where the `Ref` is set, copied or destroyed.
///
/// A `Ref` is not synchronised. Two threads may use two `Ref`s to one object at the same time when the
/// object's counting is atomic, as that of `ObjectImpl` is.
template <typename T>
class Ref {
public:
    using ElementType = T;

    /// Owns nothing.
    constexpr Ref() noexcept = default;

    constexpr Ref(std::nullptr_t) noexcept {}

    /// Takes a count of `object`, which may be null.
    Ref(T* object) noexcept : m_object(object) { Acquire(); }

    Ref(const Ref& other) noexcept : m_object(other.m_object) { Acquire(); }

    Ref(Ref&& other) noexcept : m_object(other.Detach()) {}

    template <PointerConvertibleTo<T> U>
    Ref(const Ref<U>& other) noexcept : m_object(other.Get()) {
        Acquire();
    }

    template <PointerConvertibleTo<T> U>
    Ref(Ref<U>&& other) noexcept : m_object(other.Detach()) {}

    ~Ref() {
        if (m_object != nullptr) {
            m_object->DecRef();
        }
    }

    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the copy holds the object meanwhile.
    Ref& operator=(const Ref& other) noexcept {
        Ref(other).Swap(*this);
        return *this;
    }

    Ref& operator=(Ref&& other) noexcept {
        Ref(std::move(other)).Swap(*this);
        return *this;
    }

    /// Takes over a count that the caller already holds, for example one that `Detach` gave up.
    [[nodiscard]] static Ref Adopt(T* object) noexcept {
        Ref ref;
        ref.m_object = object;
        return ref;
    }

    /// Gives up ownership: returns the pointer together with its count, which the caller must return, and
    /// owns nothing afterwards.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(m_object, nullptr); }

    /// Takes a count of `object` and only then releases the one held before, so that setting the same object
    /// again is safe.
    void Reset(T* object = nullptr) noexcept { Ref(object).Swap(*this); }

    void Swap(Ref& other) noexcept { std::swap(m_object, other.m_object); }

    /// The object, borrowed; null when nothing is owned.
    [[nodiscard]] T* Get() const noexcept { return m_object; }

    T* operator->() const noexcept { return m_object; }

    T& operator*() const noexcept { return *m_object; }

    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// Comparison is of addresses.
    friend bool operator==(const Ref& left, const Ref& right) noexcept {
        return left.m_object == right.m_object;
    }

    friend bool operator==(const Ref& left, const T* right) noexcept { return left.m_object == right; }

    friend bool operator==(const Ref& left, std::nullptr_t) noexcept { return left.m_object == nullptr; }

    friend std::strong_ordering operator<=>(const Ref& left, const Ref& right) noexcept {
        return std::compare_three_way()(left.m_object, right.m_object);
    }

    friend void swap(Ref& left, Ref& right) noexcept { left.Swap(right); }

private:
    void Acquire() const noexcept {
        if (m_object != nullptr) {
            m_object->IncRef();
        }
    }

    T* m_object = nullptr;
};

/// Creates a `T` that the returned `Ref` owns.
template <typename T, typename... Args>
[[nodiscard]] Ref<T> MakeRef(Args&&... args) {
    return Ref<T>(new T(std::forward<Args>(args)...));
}

} // namespace Pellum

template <typename T>
struct std::hash<Pellum::Ref<T>> {
    std::size_t operator()(const Pellum::Ref<T>& ref) const noexcept { return std::hash<T*>()(ref.Get()); }
};
