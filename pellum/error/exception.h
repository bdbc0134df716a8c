#pragma once

#include "pellum/error/throwable.h"

#include <new>
#include <utility>

namespace Pellum {

/// Base of exceptions that can be copied and raised again without knowing their class.
class PELLUM_API Exception : public Throwable {
public:
    using Throwable::Throwable;
    Exception(const Exception& other) noexcept;
    Exception& operator=(const Exception& other) noexcept;
    ~Exception() override;

    /// Creates a copy of the most derived class; the caller owns it and ends it with `delete`. Null when
    /// there is no memory for it.
    [[nodiscard]] virtual Exception* Clone() const;

    /// Throws a copy of this exception, by value and of the most derived class.
    [[noreturn]] virtual void Throw();
};

/// Implements `Clone` and `Throw` for `Derived`, which derives from `ExceptionImpl<Derived>`, or from
/// `ExceptionImpl<Derived, Base>` where its base class is another exception:
///
///     class TimeoutException : public ExceptionImpl<TimeoutException> {
///     public:
///         using ExceptionImpl::ExceptionImpl;
///     };
template <typename Derived, typename Base = Exception>
class ExceptionImpl : public Base {
public:
    using Base::Base;

    [[nodiscard]] Exception* Clone() const override { return new (std::nothrow) Derived(Self()); }

    [[noreturn]] void Throw() override { throw Derived(Self()); }

private:
    const Derived& Self() const noexcept { return static_cast<const Derived&>(*this); }
};

} // namespace Pellum
