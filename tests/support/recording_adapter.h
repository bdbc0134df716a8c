#pragma once

#include "tavik/managed/stub_adapter.h"
#include "tavik/value/any.h"
#include "tavik/value/mo_ref.h"

#include <functional>

namespace TestSupport {

/// A connection that leads nowhere: remembers the last call, as it came and without copies, and answers it.
class RecordingAdapter final : public Tavik::StubAdapter {
public:
    void Invoke(const Call& call, Pellum::Ref<Tavik::Any>& result) override;
    void StartInvoke(
        const Call& call, const Tavik::Completion& completion,
        Pellum::Ref<Pellum::System::ScheduledItem>& item) override;

    /// Runs first in every call; nothing is remembered of one for which it throws.
    std::function<void(const Call& call)> onCall;
    Pellum::Ref<Tavik::Any> answer; ///< the result of every call

    int count = 0;
    Pellum::Ref<Tavik::MoRef> target;
    const Tavik::ManagedMethod* method = nullptr;
    Tavik::Arguments arguments;
    // Of the last one that was started; borrowed.
    const Tavik::Completion* completion = nullptr;
    Pellum::Ref<Pellum::System::ScheduledItem>* item = nullptr;

private:
    ~RecordingAdapter() override = default;

    void Remember(const Call& call);
};

} // namespace TestSupport
