#pragma once

#include "tavik/managed/stub_impl.h"
#include "tavik/property_collector.h"
#include "tavik/type/type_of.h"

namespace Orlin::Query {

/// Calls a `PropertyCollector` that is elsewhere.
class TAVIK_API PropertyCollectorStub : public Tavik::StubImpl, public virtual PropertyCollector {
public:
    /// See `Tavik::StubImpl`.
    PropertyCollectorStub(
        Tavik::MoRef* reference, Tavik::StubAdapter* adapter, Tavik::RequestContext* context);

protected:
    ~PropertyCollectorStub() override;
};

} // namespace Orlin::Query

template <>
inline Tavik::ManagedObjectType* Tavik::GetMoType<Orlin::Query::PropertyCollectorStub>() {
    return GetMoType<Orlin::Query::PropertyCollector>();
}
