#pragma once

#include "tavik/value/data_object.h"

namespace Tavik {

/// `orlin.MethodFault`: base of every fault.
class TAVIK_API MethodFault : public DynamicData {
public:
    MethodFault() noexcept;
    ~MethodFault() override;

    Type* _GetType() const override;
    MethodFault* _Clone() const override;
    DataObjectType* _GetDataType() const override;

protected:
    friend struct ObjectCloner;
    MethodFault(const MethodFault&) noexcept;
};

/// `orlin.RuntimeFault`: base of the faults that any method may raise without declaring them.
class TAVIK_API RuntimeFault : public MethodFault {
public:
    RuntimeFault() noexcept;
    ~RuntimeFault() override;

    Type* _GetType() const override;
    RuntimeFault* _Clone() const override;
    DataObjectType* _GetDataType() const override;

protected:
    friend struct ObjectCloner;
    RuntimeFault(const RuntimeFault&) noexcept;
};

} // namespace Tavik
