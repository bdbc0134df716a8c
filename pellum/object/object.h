#pragma once

#include "pellum/export.h"

#include <atomic>
#include <string>

namespace Pellum {

/// Common interface of reference-counted objects that are reached through virtual inheritance.
///
/// A new object has the count 0; the first `Ref` adopts it. Objects are created with `new` and destroy
/// themselves.
class PELLUM_API Object {
public:
    virtual void IncRef() const noexcept = 0;

    /// Gives a count back; the object is destroyed when none is left.
    virtual void DecRef() const noexcept = 0;

    /// A short text for people: what this object is.
    [[nodiscard]] virtual std::string ToString() const = 0;

    /// The count at this moment; other threads may change it at any time. For diagnosis.
    [[nodiscard]] virtual int GetRefCount() const noexcept = 0;

protected:
    Object() = default;
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;
    virtual ~Object();
};

/// The usual implementation of `Object`: an atomic count. Counting is safe from any thread.
class PELLUM_API ObjectImpl : public virtual Object {
public:
    void IncRef() const noexcept override;
    void DecRef() const noexcept override;

    /// Takes a count unless there is none, whether the object is being destroyed or nobody owns it yet;
    /// returns whether it did. For those who know an object without owning it, and keep its destructor from
    /// ending meanwhile.
    [[nodiscard]] bool TryIncRef() const noexcept;

    /// The name of the most derived class, unless a class says more.
    [[nodiscard]] std::string ToString() const override;
    [[nodiscard]] int GetRefCount() const noexcept override;

protected:
    ObjectImpl() = default;

    /// A copy is a new object: it starts with the count 0, and assignment leaves the count alone.
    ObjectImpl(const ObjectImpl& other);
    ObjectImpl& operator=(const ObjectImpl& other);
    ~ObjectImpl() override;

private:
    mutable std::atomic<int> m_refCount = 0;
};

} // namespace Pellum
