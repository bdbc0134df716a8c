#pragma once

#include "tavik/descriptor/builtin.h"
#include "tavik/type/type_of.h"

namespace Orlin::Query {

/// `orlin.query.PropertyCollector`: the managed type by which clients read and watch properties. Only
/// references to it are held.
class TAVIK_API PropertyCollector {
public:
    PropertyCollector() = delete;
};

} // namespace Orlin::Query

namespace Tavik {

template <>
TAVIK_API ManagedObjectType* GetMoType<Orlin::Query::PropertyCollector>();

} // namespace Tavik
