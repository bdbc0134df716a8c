#pragma once

#include "tavik/descriptor/builtin.h"
#include "tavik/managed/managed_object.h"
#include "tavik/type/type_of.h"

namespace Orlin::Query {

/// `orlin.query.PropertyCollector`: the managed type by which clients read and watch properties. Its methods
/// are not described here.
class TAVIK_API PropertyCollector : public virtual Tavik::ManagedObject {
public:
    PropertyCollector() = default;
    PropertyCollector(const PropertyCollector&) = default;
    PropertyCollector& operator=(const PropertyCollector&) = default;
    [[nodiscard]] Tavik::ManagedObjectType* _GetType() const override;

protected:
    ~PropertyCollector() override;
};

} // namespace Orlin::Query

namespace Tavik {

template <>
TAVIK_API ManagedObjectType* GetMoType<Orlin::Query::PropertyCollector>();

} // namespace Tavik
