#include "tavik/managed/stub_impl.h"

#include "pellum/error/exception.h"
#include "tavik/fault/runtime_faults.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/type_registry.h"

namespace Tavik {

namespace {

using Orlin::Fault::ManagedObjectNotFound;

StubAdapter::Call MakeCall(
    MoRef& target, const ManagedMethod* method, const Arguments& arguments, RequestContext* context) {
    if (method == nullptr) {
        throw Pellum::Exception(
            std::string("the method called on ") + target.GetTypeInfo().name + " has not been registered");
    }
    return {target, *method, arguments, context};
}

/// Stands for a call that was over before it began.
class EndedCall final : public Pellum::System::ScheduledItem {
public:
    EndedCall() = default;

    bool Cancel() override { return false; }

    [[nodiscard]] bool IsDone() const override { return true; }

private:
    ~EndedCall() override = default;
};

} // namespace

StubImpl::StubImpl(MoRef* reference, StubAdapter* adapter, RequestContext* context)
    : m_reference(reference), m_adapter(adapter), m_context(context) {
    if (reference == nullptr || adapter == nullptr) {
        throw Pellum::Exception("a stub needs a reference and an adapter");
    }
    // From here on the method objects that the stub's methods pass are there.
    TypeRegistry::Instance().Load();
    adapter->AddStub(*this);
}

StubImpl::~StubImpl() {
    m_adapter->RemoveStub(*this);
}

void StubImpl::_Invoke(ManagedMethod* method, Arguments& arguments, Pellum::Ref<Any>& result) {
    CheckRegistered();
    m_adapter->Invoke(MakeCall(*m_reference, method, arguments, m_context.Get()), result);
}

void StubImpl::_Invoke_Task(ManagedMethod* method, Arguments& arguments, Pellum::Ref<Any>& result) {
    StubImpl::_Invoke(method, arguments, result);
}

void StubImpl::_Invoke_Task(ManagedMethod* method, Arguments& arguments) {
    Pellum::Ref<Any> ignored;
    _Invoke_Task(method, arguments, ignored);
}

void StubImpl::_StartInvoke(
    ManagedMethod* method, Arguments& arguments, const Completion& completion,
    Pellum::Ref<Pellum::System::ScheduledItem>& item) {
    if (m_unregistered.load(std::memory_order_acquire)) {
        item = Pellum::MakeRef<EndedCall>();
        TellUnregistered(completion, *item);
        return;
    }
    m_adapter->StartInvoke(MakeCall(*m_reference, method, arguments, m_context.Get()), completion, item);
}

void StubImpl::_StartInvoke_Task(
    ManagedMethod* method, Arguments& arguments, const Completion& completion,
    Pellum::Ref<Pellum::System::ScheduledItem>& item) {
    StubImpl::_StartInvoke(method, arguments, completion, item);
}

StubAdapter* StubImpl::_GetStubAdapter() {
    return m_adapter.Get();
}

RequestContext* StubImpl::_GetRequestContext() {
    return m_context.Get();
}

void StubImpl::_SetRequestContext(RequestContext* context) {
    m_context.Reset(context);
}

MoRef* StubImpl::_GetRef() const {
    return m_reference.Get();
}

void StubImpl::_Unregistered() {
    m_unregistered.store(true, std::memory_order_release);
}

void StubImpl::CheckRegistered() const {
    if (m_unregistered.load(std::memory_order_acquire)) {
        throw ManagedObjectNotFound::Exception(MakeNotFound().Get());
    }
}

Pellum::Ref<ManagedObjectNotFound> StubImpl::MakeNotFound() const {
    return Pellum::MakeRef<ManagedObjectNotFound>(m_reference->GetTypeInfo().wireName, m_reference->GetId());
}

void StubImpl::TellUnregistered(const Completion& completion, Pellum::System::ScheduledItem& item) const {
    if (!completion) {
        return;
    }
    ManagedObjectNotFound::Exception exception(MakeNotFound().Get());
    try {
        completion(&item, &exception, nullptr);
    } catch (...) { // NOLINT(bugprone-empty-catch): what a completion throws is lost.
    }
}

} // namespace Tavik
