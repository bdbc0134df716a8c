#include "tavik/rpc/call_failure.h"

#include "pellum/text/demangle.h"
#include "tavik/fault/method_fault.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/json_text.h"
#include "tavik/value/mo_ref.h"

#include <typeinfo>

namespace Tavik {

namespace {

/// The text with control characters as escapes: what peers and exceptions say must not look like other lines.
std::string OneLine(std::string_view text) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string line;
    line.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f) {
            line += "\\x";
            line += kDigits[byte >> 4U];
            line += kDigits[byte & 0xfU];
        } else {
            line += c;
        }
    }
    return line;
}

bool IsUndeclared(const std::exception& error, const ManagedMethod& method) {
    const auto* const raised = dynamic_cast<const MethodFault::Exception*>(&error);
    const MethodFault* const fault = raised != nullptr ? raised->GetFault() : nullptr;
    const Type* const type = fault != nullptr ? fault->_GetDataType() : nullptr;
    return type != nullptr && !method.Declares(*type);
}

} // namespace

std::string CallFailure::ToString() const {
    std::string text = correlationId.empty() ? "call" : "call " + std::string(correlationId);
    if (method != nullptr && target != nullptr) {
        text += " of " + DescribeCall(*method, *target);
    }
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception& error) {
        const char* const what = error.what(); // other people's classes may have none
        text += ": " + Pellum::Demangle(typeid(error)) + ": " + (what != nullptr ? what : "no text");
        if (method != nullptr && IsUndeclared(error, *method)) {
            text += " (the method does not declare this fault)";
        }
    } catch (...) {
        text += ": something was thrown that is no exception";
    }
    return OneLine(text);
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
