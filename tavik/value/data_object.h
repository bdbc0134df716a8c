#pragma once

#include "tavik/value/any.h"

#include <string>

namespace Tavik {

class DataObjectType;

/// A value with properties, described by a registered data object type.
class TAVIK_API DataObject : public Any {
public:
    Type* _GetType() const override;
    /// The registered type, borrowed; null before its library has been loaded by the registry.
    virtual DataObjectType* _GetDataType() const = 0;

protected:
    DataObject() noexcept = default;
    DataObject(const DataObject&) noexcept = default;
};

/// `orlin.DynamicData`: base of every data object class. Clone, equality and difference of this class itself
/// have nothing to look at; `_DiffProperties` works from the registered type, so that a derived class without
/// its own version of it is served as well.
class TAVIK_API DynamicData : public DataObject {
public:
    DynamicData() noexcept = default;
    ~DynamicData() override = default;

    DynamicData* _Clone() const override;
    bool _IsEqual(const Any* other, bool partial) const override;
    void _DiffProperties(const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const override;
    DataObjectType* _GetDataType() const override;

protected:
    friend struct ObjectCloner;
    DynamicData(const DynamicData&) noexcept = default;
};

} // namespace Tavik
