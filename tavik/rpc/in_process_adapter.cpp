#include "tavik/rpc/in_process_adapter.h"

#include "tavik/rpc/call_pool.h"
#include "tavik/rpc/dispatcher.h"
#include "tavik/rpc/message_codec.h"
#include "tavik/rpc/stub_table.h"

#include <utility>

namespace Tavik {

InProcessAdapter::InProcessAdapter(
    std::unique_ptr<const MessageCodec> codec, Dispatcher* server, InProcessOptions options)
    : m_pool(Pellum::MakeRef<Rpc::CallPool>(std::move(codec), server, std::move(options))),
      m_stubs(Pellum::MakeRef<Rpc::StubTable>()) {
    server->GetObjects().AddListener(*m_stubs);
}

InProcessAdapter::~InProcessAdapter() {
    m_pool->GetServer().GetObjects().RemoveListener(*m_stubs);
    m_pool->Shutdown();
    m_pool->LeaveThreads();
}

void InProcessAdapter::Invoke(const Call& call, Pellum::Ref<Any>& result) {
    m_pool->Invoke(call, result);
}

void InProcessAdapter::StartInvoke(
    const Call& call, const Completion& completion, Pellum::Ref<Pellum::System::ScheduledItem>& item) {
    m_pool->StartInvoke(call, completion, item);
}

void InProcessAdapter::AddStub(StubImpl& stub) {
    m_stubs->Add(stub);
}

void InProcessAdapter::RemoveStub(StubImpl& stub) noexcept {
    m_stubs->Remove(stub);
}

void InProcessAdapter::Shutdown() {
    m_pool->Shutdown();
}

} // namespace Tavik
