#pragma once

#include "pellum/export.h"
#include "pellum/object/object.h"

namespace Pellum::System {

/// Handle of a call that was started and will complete later.
///
/// Counted; letting go of the handle does not cancel the call. The operations may be called from any thread.
class PELLUM_API ScheduledItem : public ObjectImpl {
public:
    /// Asks that the call not complete. True when this request prevented the completion: who waits for the
    /// call is told that it was cancelled. False when the call had completed, is completing, or was cancelled
    /// before.
    virtual bool Cancel() = 0;

    /// True once the call has completed or was cancelled: nothing will happen any more.
    [[nodiscard]] virtual bool IsDone() const = 0;

protected:
    ScheduledItem() = default;
    ~ScheduledItem() override;
};

} // namespace Pellum::System
