#include "tavik/fault/method_fault.h"

#include "tavik/fault/fault_message.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/value/clone.h"

#include <new>

namespace Tavik {

namespace {

/// The call of `MethodFault::Throw` that is raising a fault on this thread; null when none is.
thread_local const void* raisingCall = nullptr;

class RaisingScope {
public:
    explicit RaisingScope(const void* call) { raisingCall = call; }

    ~RaisingScope() { raisingCall = nullptr; }

    RaisingScope(const RaisingScope&) = delete;
    RaisingScope& operator=(const RaisingScope&) = delete;
};

RaisedAt CallOr(const void* caller) {
    return {raisingCall != nullptr ? raisingCall : caller};
}

} // namespace

MethodFault::MethodFault() noexcept = default;
MethodFault::MethodFault(const MethodFault&) noexcept = default;
MethodFault::~MethodFault() = default;

Type* MethodFault::_GetType() const {
    return GetDoType<MethodFault>();
}

MethodFault* MethodFault::_Clone() const {
    return CloneObject(*this);
}

DataObjectType* MethodFault::_GetDataType() const {
    return GetDoType<MethodFault>();
}

const Pellum::Http::ResponseCode::Info& MethodFault::GetHttpMapping() const {
    const DataObjectType* const type = _GetDataType();
    return type != nullptr ? type->GetHttpStatus() : Pellum::Http::ResponseCode::kInternalServerError;
}

void MethodFault::ThrowInternal() {
    throw Exception(this);
}

void MethodFault::Throw() {
    const RaisingScope scope(__builtin_return_address(0));
    ThrowInternal();
    throw Exception(this); // an override of ThrowInternal has returned
}

MethodFault::Exception* MethodFault::CreateException() {
    return new (std::nothrow) Exception(this, RaisedAt{__builtin_return_address(0)});
}

MethodFault::Exception::Exception(MethodFault* fault) noexcept
    : Exception(fault, CallOr(__builtin_return_address(0))) {}

MethodFault::Exception::Exception(MethodFault* fault, RaisedAt place) noexcept
    : Pellum::Exception(
        DescribeFault(fault), NameOfFault(fault), Pellum::System::Backtrace::CaptureFrom(place.address)),
      m_fault(fault) {}

MethodFault::Exception::Exception(const Exception& other) noexcept = default;
MethodFault::Exception& MethodFault::Exception::operator=(const Exception& other) noexcept = default;
MethodFault::Exception::~Exception() = default;

Pellum::Exception* MethodFault::Exception::Clone() const {
    return new (std::nothrow) Exception(*this);
}

TAVIK_FAULT_SOURCE(MethodFault, Exception)

RuntimeFault::RuntimeFault() noexcept = default;
RuntimeFault::RuntimeFault(const RuntimeFault&) noexcept = default;
RuntimeFault::~RuntimeFault() = default;

Type* RuntimeFault::_GetType() const {
    return GetDoType<RuntimeFault>();
}

RuntimeFault* RuntimeFault::_Clone() const {
    return CloneObject(*this);
}

DataObjectType* RuntimeFault::_GetDataType() const {
    return GetDoType<RuntimeFault>();
}

TAVIK_FAULT_SOURCE(RuntimeFault, Exception)

} // namespace Tavik
