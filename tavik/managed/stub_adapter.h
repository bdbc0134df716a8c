#pragma once

#include "pellum/object/object.h"
#include "pellum/object/ref.h"
#include "pellum/system/scheduled_item.h"
#include "tavik/export.h"

#include <functional>
#include <vector>

namespace Pellum {
class Exception;
}

namespace Tavik {

class Any;
class ManagedMethod;
class MoRef;
class RequestContext;
class StubImpl;

/// The arguments of a call, one for each declared parameter, in declared order; null for an unset one.
using Arguments = std::vector<Pellum::Ref<Any>>;

/// Told once how a call ended: by the handle that started it, and either by an exception or by the result,
/// which is null for a method without one. All three are borrowed for the time of the callback.
///
/// Which thread runs it is the adapter's choice; see there what it may not do. What it throws is lost.
using Completion = std::function<void(Pellum::System::ScheduledItem*, Pellum::Exception*, Any*)>;

/// A connection: carries the calls of stubs to the objects that they stand for. Its functions may be called
/// from any thread.
class TAVIK_API StubAdapter : public Pellum::ObjectImpl {
public:
    /// One call, borrowed for the time of the function that is given it.
    struct Call {
        MoRef& target;
        const ManagedMethod& method;
        const Arguments& arguments;
        RequestContext* context; ///< null for none
    };

    /// Carries a call and waits for its end. `result` is what came back, null for nothing. Throws the fault
    /// that the method threw as the fault's own exception, and exceptions derived from `Pellum::Exception`
    /// when the call could not be carried.
    virtual void Invoke(const Call& call, Pellum::Ref<Any>& result) = 0;

    /// Starts a call and returns; `item` then stands for it. How it ends, whatever the reason, is told to
    /// `completion`, exactly once; it may run before this returns. Throws only when there is no memory, and
    /// tells the completion nothing then.
    virtual void StartInvoke(
        const Call& call, const Completion& completion, Pellum::Ref<Pellum::System::ScheduledItem>& item) = 0;

    /// A stub begins or ends its life: `stub` is borrowed until then. An adapter that learns of objects that
    /// are unregistered tells the stubs that it knows.
    virtual void AddStub(StubImpl& stub);
    virtual void RemoveStub(StubImpl& stub) noexcept;

protected:
    StubAdapter() = default;
    ~StubAdapter() override;
};

} // namespace Tavik
