#include "tests/support/recording_adapter.h"

namespace TestSupport {

void RecordingAdapter::Invoke(const Call& call, Pellum::Ref<Tavik::Any>& result) {
    Remember(call);
    result = answer;
}

void RecordingAdapter::StartInvoke(
    const Call& call, const Tavik::Completion& completionOfCall,
    Pellum::Ref<Pellum::System::ScheduledItem>& itemOfCall) {
    Remember(call);
    completion = &completionOfCall;
    item = &itemOfCall;
}

void RecordingAdapter::Remember(const Call& call) {
    if (onCall) {
        onCall(call);
    }
    ++count;
    target.Reset(&call.target);
    method = &call.method;
    arguments = call.arguments;
}

} // namespace TestSupport
