#pragma once

#include "pellum/object/object.h"
#include "pellum/object/ref.h"
#include "tavik/managed/managed_object.h"
#include "tavik/managed/request_context.h"
#include "tavik/managed/stub_adapter.h"
#include "tavik/value/mo_ref.h"

#include <atomic>

namespace Orlin::Fault {
class ManagedObjectNotFound;
}

namespace Tavik {

class ManagedMethod;

/// What every client stub stands on: the object that it stands for, the connection, and the context of its
/// calls.
///
/// Calls may be made from many threads at once and take no lock here. `_SetRequestContext` must not run
/// beside them: give each thread that needs a context of its own a stub of its own.
class TAVIK_API StubImpl : public virtual Pellum::ObjectImpl, public virtual ManagedObject {
public:
    // The virtual functions stand in the order that foreign callers know.

    /// Calls a method and waits for its end; `result` is what came back. Throws the fault that the method
    /// threw, and whatever the adapter throws when the call could not be carried. After `_Unregistered`
    /// throws `Orlin::Fault::ManagedObjectNotFound::Exception`. `_Invoke_Task` does the same; they are two
    /// for methods that return a task.
    virtual void _Invoke(ManagedMethod* method, Arguments& arguments, Pellum::Ref<Any>& result);
    virtual void _Invoke_Task(ManagedMethod* method, Arguments& arguments, Pellum::Ref<Any>& result);
    /// Starts a call and returns; see `StubAdapter::StartInvoke`. After `_Unregistered` the completion is
    /// told `ManagedObjectNotFound` before this returns.
    virtual void _StartInvoke(
        ManagedMethod* method, Arguments& arguments, const Completion& completion,
        Pellum::Ref<Pellum::System::ScheduledItem>& item);
    virtual void _StartInvoke_Task(
        ManagedMethod* method, Arguments& arguments, const Completion& completion,
        Pellum::Ref<Pellum::System::ScheduledItem>& item);
    /// Borrowed.
    virtual StubAdapter* _GetStubAdapter();
    /// Borrowed; null for none.
    virtual RequestContext* _GetRequestContext();
    /// Takes a count of `context`, which is null for none.
    virtual void _SetRequestContext(RequestContext* context);

    [[nodiscard]] MoRef* _GetRef() const override;
    void _Unregistered() override;

protected:
    /// Takes a count of each; `context` may be null. Throws `Pellum::Exception` when one of the others is.
    StubImpl(MoRef* reference, StubAdapter* adapter, RequestContext* context);
    ~StubImpl() override;

    /// Calls a method without a result.
    void _Invoke_Task(ManagedMethod* method, Arguments& arguments);

private:
    void CheckRegistered() const;
    Pellum::Ref<Orlin::Fault::ManagedObjectNotFound> MakeNotFound() const;
    void TellUnregistered(const Completion& completion, Pellum::System::ScheduledItem& item) const;

    Pellum::Ref<MoRef> m_reference;
    Pellum::Ref<StubAdapter> m_adapter;
    Pellum::Ref<RequestContext> m_context;
    std::atomic<bool> m_unregistered = false;
};

} // namespace Tavik
