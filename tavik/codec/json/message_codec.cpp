#include "tavik/codec/json/message_codec.h"

#include "tavik/codec/json/message_members.h"
#include "tavik/codec/json/request_builder.h"
#include "tavik/codec/json/response_builder.h"
#include "tavik/managed/managed_method.h"
#include "tavik/managed/request_context.h"
#include "tavik/rpc/errors.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "tavik/value/json_text.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/print.h"

#include <new>
#include <utility>

namespace Tavik::Json {

namespace {

constexpr std::string_view kRedacted = "***";

/// Writes one message, the members of an object one by one.
class MessageWriter {
public:
    /// Both are borrowed; `version` is null for no restriction.
    MessageWriter(const Version* version, bool showSecrets, std::string& out) : m_out(out) {
        m_options.version = version;
        m_options.showSecrets = showSecrets;
    }

    /// Values that follow must be such that a peer takes them.
    void RequireComplete() { m_options.requireComplete = true; }

    void Begin(std::string_view name = {}) {
        if (!name.empty()) {
            Key(name);
        }
        m_out += '{';
        m_isFirst = true;
    }

    void End() {
        m_out += '}';
        m_isFirst = false;
    }

    /// Leaves out what is empty.
    void Text(std::string_view name, std::string_view text) {
        if (text.empty()) {
            return;
        }
        Key(name);
        if (!AppendQuoted(m_out, text)) {
            throw MessageException(std::string(name), "is not UTF-8 text");
        }
    }

    void Secret(std::string_view name, std::string_view text) {
        Text(name, text.empty() || m_options.showSecrets ? text : kRedacted);
    }

    void Number(std::string_view name, long long number) {
        Key(name);
        m_out += std::to_string(number);
    }

    /// `path` is what stands in front of the path of what can not be written.
    void Value(std::string_view path, std::string_view name, const Any* value, const CallValue& declared) {
        if (declared.descriptor->IsSecret() && !m_options.showSecrets) {
            Text(name, kRedacted);
            return;
        }
        Value(path, name, value, declared.type);
    }

    void Value(std::string_view path, std::string_view name, const Any* value, const Type* declared) {
        Key(name);
        m_options.declaredType = declared;
        PrintProblem problem;
        if (!TryPrint(value, m_options, m_out, problem)) {
            std::string place = std::string(path) + std::string(name);
            place += problem.path.empty() || problem.path.front() == '[' ? "" : ".";
            throw MessageException(place + problem.path, problem.what);
        }
    }

private:
    void Key(std::string_view name) {
        if (!m_isFirst) {
            m_out += ", ";
        }
        m_isFirst = false;
        m_out += '"';
        m_out += name; // the names of messages and parameters are plain words
        m_out += "\": ";
    }

    std::string& m_out;
    PrintOptions m_options;
    bool m_isFirst = true;
};

/// A request's parts, wherever they come from; all borrowed.
struct RequestParts {
    const ManagedMethod& method;
    const Arguments& arguments;
    std::string_view targetType;
    std::string_view targetId;
    const Version* version;
    std::string_view sessionKey;
    std::string_view locale;
    std::string_view correlationId;
    std::optional<std::chrono::milliseconds> timeout;
};

void WriteArguments(const RequestParts& parts, MessageWriter& writer) {
    const std::vector<CallValue>& parameters = parts.method.GetParameters();
    if (parts.arguments.size() != parameters.size()) {
        throw MessageException(
            std::string(Member::kArguments), std::string(parts.method.GetName()) + " takes "
                                                 + std::to_string(parameters.size()) + " arguments, not "
                                                 + std::to_string(parts.arguments.size()));
    }
    writer.Begin(Member::kArguments);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parts.arguments[i].Get() != nullptr && parameters[i].IsPartOf(parts.version)) {
            writer.Value(
                "arguments.", parameters[i].descriptor->name, parts.arguments[i].Get(), parameters[i]);
        }
    }
    writer.End();
}

void WriteRequest(const RequestParts& parts, bool showSecrets, std::string& out) {
    MessageWriter writer(parts.version, showSecrets, out);
    const ManagedMethod& method = parts.method;
    writer.Begin();
    writer.Text(method.IsPropertyGetter() ? Member::kProperty : Member::kMethod, method.GetWireName());
    writer.Text(Member::kDeclaringType, method.GetOwner().GetWireName());
    writer.Begin(Member::kTarget);
    writer.Text(Member::kTargetType, parts.targetType);
    writer.Text(Member::kTargetId, parts.targetId);
    writer.End();
    if (parts.version != nullptr) {
        writer.Text(Member::kVersion, parts.version->GetName());
    }
    writer.Secret(Member::kSession, parts.sessionKey);
    writer.Text(Member::kLocale, parts.locale);
    writer.Text(Member::kCorrelation, parts.correlationId);
    if (parts.timeout) {
        writer.Number(Member::kTimeout, parts.timeout->count());
    }
    if (!method.GetParameters().empty() || !parts.arguments.empty()) {
        WriteArguments(parts, writer);
    }
    writer.End();
}

void WriteResult(const ResponseForm& form, const Any* result, bool showSecrets, std::string& out) {
    MessageWriter writer(form.version, showSecrets, out);
    if (showSecrets) { // for the peer, not for a log
        writer.RequireComplete();
    }
    writer.Begin();
    writer.Text(Member::kCorrelation, form.correlationId);
    if (result != nullptr) {
        const CallValue& declared = form.method.GetResult();
        if (declared.descriptor == nullptr) {
            throw MessageException(
                std::string(Member::kResult), std::string(form.method.GetName()) + " has no result");
        }
        writer.Value({}, Member::kResult, result, declared);
    }
    writer.End();
}

void WriteFault(
    const MethodFault& fault, const Version* version, std::string_view correlationId, bool showSecrets,
    std::string& out) {
    MessageWriter writer(version, showSecrets, out);
    if (showSecrets) {
        writer.RequireComplete();
    }
    writer.Begin();
    writer.Text(Member::kCorrelation, correlationId);
    writer.Value({}, Member::kFault, &fault, static_cast<const Type*>(nullptr));
    writer.End();
}

/// Tells of `builder` what is in the message, with the codec's own exception.
void Parse(std::string_view message, const DecodeLimits& limits, EventSink& builder) {
    try {
        ParseEvents(message, {limits, {}, kMessageDepth}, builder);
    } catch (const DecodeError& error) {
        throw MessageException(
            error.GetPath(), error.GetReason() + " (line " + std::to_string(error.GetLine()) + ", column "
                                 + std::to_string(error.GetColumn()) + ')');
    }
}

/// What `print` makes of a message, or why there is nothing to show.
template <class Print>
std::string PrintOrExplain(std::string_view message, Print print) {
    std::string text;
    try {
        print(text);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        text = "a message of " + std::to_string(message.size()) + " bytes that can not be read: ";
        text += error.what();
    }
    return text;
}

} // namespace

MessageCodec::MessageCodec(const DecodeLimits& limits) : m_limits(limits) {}

MessageCodec::~MessageCodec() = default;

void MessageCodec::EncodeRequest(const Request& request, std::string& out) const {
    const StubAdapter::Call& call = request.call;
    RequestParts parts{
        .method = call.method,
        .arguments = call.arguments,
        .targetType = call.target.GetTypeInfo().wireName,
        .targetId = call.target.GetId(),
        .version = nullptr,
        .sessionKey = {},
        .locale = {},
        .correlationId = request.correlationId,
        .timeout = request.timeout};
    if (call.context != nullptr) {
        parts.version = call.context->GetVersion();
        parts.sessionKey = call.context->GetSessionKey();
        parts.locale = call.context->GetLocale();
    }
    WriteRequest(parts, true, out);
}

Arguments MessageCodec::DecodeRequest(std::string_view message, const BeginFunction& begin) const {
    RequestBuilder builder(m_limits, begin);
    Parse(message, m_limits, builder);
    return std::move(builder.GetArguments());
}

void MessageCodec::EncodeResult(const ResponseForm& form, const Any* result, std::string& out) const {
    WriteResult(form, result, true, out);
}

void MessageCodec::EncodeFault(
    const MethodFault& fault, const Version* version, std::string_view correlationId,
    std::string& out) const {
    WriteFault(fault, version, correlationId, true, out);
}

Response MessageCodec::DecodeResponse(std::string_view message, const ResponseForm& form) const {
    ResponseBuilder builder(m_limits, form);
    Parse(message, m_limits, builder);
    const std::string& answered = builder.GetCorrelationId();
    if (!answered.empty() && !form.correlationId.empty() && answered != form.correlationId) {
        throw MessageException(std::string(Member::kCorrelation), "the response is that to another call");
    }
    return std::move(builder.GetResponse());
}

std::string MessageCodec::PrintRequest(std::string_view message) const {
    return PrintOrExplain(message, [&](std::string& text) {
        RequestHeader header;
        const ManagedMethod* method = nullptr;
        const Version* version = nullptr;
        const auto begin = [&](RequestHeader&& read) {
            header = std::move(read);
            method = FindMethod(header);
            version = TypeRegistry::Instance().FindVersion(header.version);
            if (method == nullptr) {
                throw MessageException({}, "there is no such method");
            }
            return RequestForm{*method, version};
        };
        const Arguments arguments = DecodeRequest(message, begin);
        const RequestParts parts{
            .method = *method,
            .arguments = arguments,
            .targetType = header.targetType,
            .targetId = header.targetId,
            .version = version,
            .sessionKey = header.sessionKey,
            .locale = header.locale,
            .correlationId = header.correlationId,
            .timeout = header.timeout};
        WriteRequest(parts, false, text);
    });
}

std::string MessageCodec::PrintResponse(std::string_view message, const ManagedMethod& method) const {
    return PrintOrExplain(message, [&](std::string& text) {
        const ResponseForm form{method, nullptr, {}};
        ResponseBuilder builder(m_limits, form);
        Parse(message, m_limits, builder);
        const Response& response = builder.GetResponse();
        if (response.fault.Get() != nullptr) {
            WriteFault(*response.fault, nullptr, builder.GetCorrelationId(), false, text);
        } else {
            WriteResult({method, nullptr, builder.GetCorrelationId()}, response.result.Get(), false, text);
        }
    });
}

} // namespace Tavik::Json
