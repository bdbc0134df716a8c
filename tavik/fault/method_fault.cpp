#include "tavik/fault/method_fault.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/value/clone.h"

namespace Tavik {

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

} // namespace Tavik
