#pragma once

#include "tavik/descriptor/builtin.h"
#include "tavik/fault/method_fault.h"
#include "tavik/type/type_of.h"
#include "tavik/value/data_array.h"
#include "tavik/value/open_object.h"

#include <string>
#include <string_view>

/// The faults that the runtime itself raises. What they say is open content; the accessors know its names,
/// and give empty texts for what is not there.

/// What each of the classes has beside its accessors. The default constructor leaves the content empty.
// NOLINTBEGIN(bugprone-macro-parentheses): class names in declarations take none.
#define TAVIK_RUNTIME_FAULT(Class)                                                                           \
public:                                                                                                      \
    Class();                                                                                                 \
    ~Class() override;                                                                                       \
    Tavik::Type* _GetType() const override;                                                                  \
    Class* _Clone() const override;                                                                          \
    Tavik::DataObjectType* _GetDataType() const override;                                                    \
                                                                                                             \
    class TAVIK_API Exception : public Tavik::RuntimeFault::Exception {                                      \
        TAVIK_FAULT_EXCEPTION(Exception, Class, Tavik::RuntimeFault::Exception)                              \
                                                                                                             \
        [[gnu::always_inline]] Exception() : Exception(Pellum::MakeRef<Class>().Get()) {}                    \
    };                                                                                                       \
                                                                                                             \
    TAVIK_FAULT_THROWN_AS(Exception)                                                                         \
                                                                                                             \
protected:                                                                                                   \
    friend struct Tavik::ObjectCloner;                                                                       \
    Class(const Class&);                                                                                     \
                                                                                                             \
public:
// NOLINTEND(bugprone-macro-parentheses)

namespace Orlin::Fault {

/// `orlin.fault.InvalidArgument`: an argument of a call is wrong.
class TAVIK_API InvalidArgument : public Tavik::OpenObject<Tavik::RuntimeFault> {
    TAVIK_RUNTIME_FAULT(InvalidArgument)

    /// `invalidProperty` is the path of what is wrong, "spec.location"; an empty text leaves it out.
    InvalidArgument(std::string_view invalidProperty, std::string_view reason);

    std::string GetInvalidProperty() const;
    std::string GetReason() const;
};

/// `orlin.fault.SystemError`: a call failed in a way that no fault of the interface tells. The reason is for
/// the caller to read and holds no internals; the correlation id finds them in the server's log.
class TAVIK_API SystemError : public Tavik::OpenObject<Tavik::RuntimeFault> {
    TAVIK_RUNTIME_FAULT(SystemError)

    SystemError(std::string_view reason, std::string_view correlationId);

    std::string GetReason() const;
    std::string GetCorrelationId() const;
};

/// `orlin.fault.InvalidRequest`: a message can not be understood, or asks for a method that the object, or
/// the caller's version of the interface, does not have.
class TAVIK_API InvalidRequest : public Tavik::OpenObject<Tavik::RuntimeFault> {
    TAVIK_RUNTIME_FAULT(InvalidRequest)

    explicit InvalidRequest(std::string_view reason);

    std::string GetReason() const;
};

/// `orlin.fault.ManagedObjectNotFound`: no object has the identifier that was called.
class TAVIK_API ManagedObjectNotFound : public Tavik::OpenObject<Tavik::RuntimeFault> {
    TAVIK_RUNTIME_FAULT(ManagedObjectNotFound)

    /// `typeName` is the wire name of the object's type.
    ManagedObjectNotFound(std::string_view typeName, std::string_view id);

    std::string GetObjectTypeName() const;
    std::string GetObjectId() const;
};

} // namespace Orlin::Fault

namespace Tavik {

// NOLINTBEGIN(bugprone-macro-parentheses)
#define TAVIK_RUNTIME_FAULT_TYPE(Class)                                                                      \
    template <>                                                                                              \
    TAVIK_API DataObjectType* GetDoType<Class>();                                                            \
    extern template class TAVIK_INSTANTIATION_API(TAVIK_API) DataArray<Class>
// NOLINTEND(bugprone-macro-parentheses)

TAVIK_RUNTIME_FAULT_TYPE(Orlin::Fault::InvalidArgument);
TAVIK_RUNTIME_FAULT_TYPE(Orlin::Fault::SystemError);
TAVIK_RUNTIME_FAULT_TYPE(Orlin::Fault::InvalidRequest);
TAVIK_RUNTIME_FAULT_TYPE(Orlin::Fault::ManagedObjectNotFound);

} // namespace Tavik
