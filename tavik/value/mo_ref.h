#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/value/any.h"

#include <string>

namespace Tavik {

/// Reference to a managed object: the type that it was declared with, and the object's identifier. Immutable.
class TAVIK_API MoRef final : public Any {
public:
    /// `type` is borrowed: the descriptor of a managed type.
    MoRef(const TypeInfo* type, std::string id);
    ~MoRef() override;

    const TypeInfo& GetTypeInfo() const { return *m_type; }

    const std::string& GetId() const { return m_id; }

    /// The registered managed type, borrowed; null when no library has registered it.
    Type* _GetType() const override;
    MoRef* _Clone() const override;
    /// Equal when the wire names of the types and the identifiers are equal.
    bool _IsEqual(const Any* other, bool partial) const override;
    void _DiffProperties(const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const override;

private:
    friend struct ObjectCloner;
    MoRef(const MoRef&);

    const TypeInfo* m_type;
    std::string m_id;
};

} // namespace Tavik
