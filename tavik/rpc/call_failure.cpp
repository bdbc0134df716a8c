#include "tavik/rpc/call_failure.h"

#include "pellum/text/demangle.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/json_text.h"
#include "tavik/value/mo_ref.h"

#include <typeinfo>

namespace Tavik {

std::string CallFailure::ToString() const {
    std::string text = correlationId.empty() ? "call" : "call " + std::string(correlationId);
    if (method != nullptr && target != nullptr) {
        text += " of " + DescribeCall(*method, *target);
    }
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception& error) {
        text += ": " + Pellum::Demangle(typeid(error)) + ": " + error.what();
    } catch (...) {
        text += ": something was thrown that is no exception";
    }
    return text;
}

void Report(const FailureLog& log, const CallFailure& failure) noexcept {
    if (!log) {
        return;
    }
    try {
        log(failure);
    } catch (...) { // NOLINT(bugprone-empty-catch): there is nobody else to tell.
    }
}

std::string DescribeCall(const ManagedMethod& method, const MoRef& target) {
    std::string text = method.GetOwner().GetName();
    text += '.';
    text += method.GetName();
    text += " on ";
    text += target.GetTypeInfo().wireName;
    text += ' ';
    AppendQuoted(text, target.GetId());
    return text;
}

} // namespace Tavik
