#include "tavik/invalid_argument.h"

#include "tavik/type/data_object_type.h"
#include "tavik/value/clone.h"

template class Tavik::DataArray<Orlin::Fault::InvalidArgument>;

namespace Orlin::Fault {

InvalidArgument::InvalidArgument() = default;
InvalidArgument::InvalidArgument(const InvalidArgument&) = default;
InvalidArgument::~InvalidArgument() = default;

Tavik::Type* InvalidArgument::_GetType() const {
    return _GetDataType();
}

InvalidArgument* InvalidArgument::_Clone() const {
    return Tavik::CloneObject(*this);
}

Tavik::DataObjectType* InvalidArgument::_GetDataType() const {
    return Tavik::GetDoType<InvalidArgument>();
}

} // namespace Orlin::Fault
