#pragma once

#include "pellum/error/exception.h"
#include "pellum/http/response_code.h"
#include "tavik/value/data_object.h"

namespace Tavik {

/// A call that raises a fault, by its return address.
struct RaisedAt {
    const void* address;
};

/// `orlin.MethodFault`: base of every fault.
///
/// A fault is a value; what is thrown for it is its class's `Exception`, which counts it. The exception
/// classes derive from each other as the faults do, so that a handler for a base catches them all.
class TAVIK_API MethodFault : public DynamicData {
public:
    class Exception;

    MethodFault() noexcept;
    ~MethodFault() override;

    Type* _GetType() const override;
    MethodFault* _Clone() const override;
    DataObjectType* _GetDataType() const override;

    /// The HTTP status that says best what has failed; a constant. By the type, or the nearest base that has
    /// one, else 500, which is also the answer before the types are loaded.
    virtual const Pellum::Http::ResponseCode::Info& GetHttpMapping() const;

protected:
    /// Throws the `Exception` of the most derived class for this fault, by value.
    [[noreturn]] virtual void ThrowInternal();

public:
    /// Throws the `Exception` of the most derived class for this fault, which must be counted by someone or
    /// be created by `new`.
    [[noreturn]] virtual void Throw();

    /// Creates an `Exception` of the most derived class for this fault; the caller owns it and ends it with
    /// `delete`. Null when there is no memory for it.
    [[nodiscard]] virtual Exception* CreateException();

protected:
    friend struct ObjectCloner;
    MethodFault(const MethodFault&) noexcept;
};

/// What is thrown for a fault. It counts the fault, which all its copies share; copying and constructing it
/// from a fault never fail.
///
/// `what` says the fault's type and those of its texts that are a message: `app.fault.DiskFull: why = "..."`.
/// No secret is among them. It is written when the exception is constructed. `Where` and the backtrace are of
/// the call that raised the fault: of `MethodFault::Throw`, or of the constructor.
class TAVIK_API MethodFault::Exception : public Pellum::Exception {
public:
    /// With a new fault.
    [[gnu::always_inline]] Exception() : Exception(Pellum::MakeRef<MethodFault>().Get()) {}

    /// Takes a count of `fault`, which may be null.
    [[gnu::noinline]] explicit Exception(MethodFault* fault) noexcept;
    Exception(const Exception& other) noexcept;
    Exception& operator=(const Exception& other) noexcept;
    ~Exception() override;

    /// The fault, borrowed; null when it was constructed from null.
    MethodFault* GetFault() noexcept { return m_fault.Get(); }

    const MethodFault* GetFault() const noexcept { return m_fault.Get(); }

    [[nodiscard]] Pellum::Exception* Clone() const override;
    [[noreturn]] void Throw() override;

protected:
    Exception(MethodFault* fault, RaisedAt place) noexcept;

private:
    friend MethodFault;

    Pellum::Ref<MethodFault> m_fault;
};

} // namespace Tavik

/// What the exception class `Name` of the fault class `Fault` has beside the constructors that make a fault.
/// `Base` is the exception class of the fault's base. `Throw` is to be defined in the library of the class:
/// see `TAVIK_FAULT_SOURCE`.
///
/// Everything else is inline, which costs no exported symbol, and the constructors always are: the call that
/// raises the fault is then the one that calls `MethodFault::Exception`.
// NOLINTBEGIN(bugprone-macro-parentheses): class names in declarations take none.
#define TAVIK_FAULT_EXCEPTION(Name, Fault, Base)                                                             \
public:                                                                                                      \
    [[gnu::always_inline]] explicit Name(Fault* fault) noexcept : Base(fault) {}                             \
                                                                                                             \
    Fault* GetFault() noexcept {                                                                             \
        return static_cast<Fault*>(Base::GetFault());                                                        \
    }                                                                                                        \
    const Fault* GetFault() const noexcept {                                                                 \
        return static_cast<const Fault*>(Base::GetFault());                                                  \
    }                                                                                                        \
    [[nodiscard]] Pellum::Exception* Clone() const override {                                                \
        return new (std::nothrow) Name(*this);                                                               \
    }                                                                                                        \
    [[noreturn]] void Throw() override;                                                                      \
                                                                                                             \
protected:                                                                                                   \
    friend Fault;                                                                                            \
    [[gnu::always_inline]] Name(Fault* fault, Tavik::RaisedAt place) noexcept : Base(fault, place) {}        \
                                                                                                             \
public:

/// What the fault class itself has, behind its exception class.
#define TAVIK_FAULT_THROWN_AS(Name)                                                                          \
protected:                                                                                                   \
    [[noreturn]] void ThrowInternal() override {                                                             \
        throw Name(this);                                                                                    \
    }                                                                                                        \
                                                                                                             \
public:                                                                                                      \
    [[nodiscard, gnu::noinline]] Name* CreateException() override {                                          \
        return new (std::nothrow) Name(this, Tavik::RaisedAt{__builtin_return_address(0)});                  \
    }

/// Beside the other definitions of the fault class `Fault`, whose exception class is `Name`.
#define TAVIK_FAULT_SOURCE(Fault, Name)                                                                      \
    void Fault::Name::Throw() {                                                                              \
        throw Name(*this);                                                                                   \
    }

// NOLINTEND(bugprone-macro-parentheses)

namespace Tavik {

/// `orlin.RuntimeFault`: base of the runtime's own faults (`Orlin::Fault`), which a call of any method may
/// end by, and of those of interfaces, which reach a client only from methods that declare them: see
/// `Dispatcher`.
class TAVIK_API RuntimeFault : public MethodFault {
public:
    RuntimeFault() noexcept;
    ~RuntimeFault() override;

    Type* _GetType() const override;
    RuntimeFault* _Clone() const override;
    DataObjectType* _GetDataType() const override;

    class TAVIK_API Exception : public MethodFault::Exception {
        TAVIK_FAULT_EXCEPTION(Exception, RuntimeFault, MethodFault::Exception)

        /// With a new fault.
        [[gnu::always_inline]] Exception() : Exception(Pellum::MakeRef<RuntimeFault>().Get()) {}
    };

    TAVIK_FAULT_THROWN_AS(Exception)

protected:
    friend struct ObjectCloner;
    RuntimeFault(const RuntimeFault&) noexcept;
};

} // namespace Tavik
