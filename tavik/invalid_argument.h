#pragma once

#include "tavik/descriptor/builtin.h"
#include "tavik/type/type_of.h"
#include "tavik/value/data_array.h"
#include "tavik/value/open_object.h"

namespace Orlin::Fault {

/// `orlin.fault.InvalidArgument`: an argument of a call is wrong. What the fault says of it is open content.
class TAVIK_API InvalidArgument : public Tavik::OpenObject<Tavik::RuntimeFault> {
public:
    InvalidArgument();
    ~InvalidArgument() override;

    Tavik::Type* _GetType() const override;
    InvalidArgument* _Clone() const override;
    Tavik::DataObjectType* _GetDataType() const override;

protected:
    friend struct Tavik::ObjectCloner;
    InvalidArgument(const InvalidArgument&);
};

} // namespace Orlin::Fault

namespace Tavik {

template <>
TAVIK_API DataObjectType* GetDoType<Orlin::Fault::InvalidArgument>();
extern template class TAVIK_INSTANTIATION_API(TAVIK_API) DataArray<Orlin::Fault::InvalidArgument>;

} // namespace Tavik
