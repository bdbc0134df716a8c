#include "tavik/property_collector.h"

#include "tavik/property_collector_stub.h"

namespace Orlin::Query {

PropertyCollector::~PropertyCollector() = default;

Tavik::ManagedObjectType* PropertyCollector::_GetType() const {
    return Tavik::GetMoType<PropertyCollector>();
}

PropertyCollectorStub::PropertyCollectorStub(
    Tavik::MoRef* reference, Tavik::StubAdapter* adapter, Tavik::RequestContext* context)
    : StubImpl(reference, adapter, context) {}

PropertyCollectorStub::~PropertyCollectorStub() = default;

} // namespace Orlin::Query
