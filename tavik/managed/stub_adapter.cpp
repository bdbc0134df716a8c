#include "tavik/managed/stub_adapter.h"

namespace Tavik {

StubAdapter::~StubAdapter() = default;

void StubAdapter::AddStub(StubImpl& /*stub*/) {}

void StubAdapter::RemoveStub(StubImpl& /*stub*/) noexcept {}

} // namespace Tavik
