#include "tavik/rpc/dispatcher.h"

#include "tavik/fault/runtime_faults.h"
#include "tavik/managed/managed_method.h"
#include "tavik/rpc/correlation_ids.h"
#include "tavik/rpc/errors.h"
#include "tavik/rpc/message_codec.h"
#include "tavik/rpc/server_call.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "tavik/value/json_text.h"
#include "tavik/value/mo_ref.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace Tavik {

namespace {

using Orlin::Fault::InvalidArgument;
using Orlin::Fault::InvalidRequest;
using Orlin::Fault::ManagedObjectNotFound;
using Orlin::Fault::SystemError;

constexpr const char* kSystemErrorReason = "the server failed to run the call";
/// It is repeated in the response and in logs.
constexpr std::size_t kLongestCorrelationId = 128;
constexpr std::string_view kArgumentsPath = "arguments";

/// A name out of a request in quotes, cut where it is long.
std::string Quote(std::string_view name) {
    constexpr std::size_t kLongest = 60;
    std::string quoted;
    AppendQuoted(quoted, name.substr(0, kLongest)); // half a character in the end becomes a mark
    return name.size() > kLongest ? quoted + "..." : quoted;
}

const ManagedObjectType* FindManagedType(std::string_view wireName) {
    const Type* const type = TypeRegistry::Instance().FindByWireName(wireName);
    return type != nullptr && type->GetKind() == TypeKind::Managed
             ? static_cast<const ManagedObjectType*>(type)
             : nullptr;
}

/// Faults of the runtime itself, which any method may raise.
bool IsRuntimeFault(const Type& type) {
    return std::string_view(type.GetName()).starts_with("orlin.fault.");
}

Pellum::Ref<MethodFault> MakeFault(const MessageException& error) {
    std::string_view path = error.GetPath();
    if (path != kArgumentsPath && !path.starts_with("arguments.")) {
        return Pellum::MakeRef<InvalidRequest>(error.what());
    }
    path.remove_prefix(std::min(path.size(), kArgumentsPath.size() + 1));
    return Pellum::MakeRef<InvalidArgument>(path, error.GetReason());
}

} // namespace

/// One request on its way to a response.
class Dispatcher::Attempt {
public:
    Attempt(const Dispatcher& dispatcher, const MessageCodec& codec, const Arrival& arrival)
        : m_dispatcher(dispatcher), m_codec(codec), m_arrival(arrival) {}

    void Run(std::string_view request, std::string& response) {
        Arguments arguments = m_codec.DecodeRequest(request, [this](RequestHeader&& header) {
            try {
                return Begin(std::move(header));
            } catch (...) {
                m_refusal = std::current_exception();
                throw;
            }
        });
        CheckRequired(arguments);
        Pellum::Ref<Any> result;
        m_stage = Stage::Running;
        Dispatch(arguments, result);
        m_stage = Stage::Answering;
        m_codec.EncodeResult({*m_method, m_version, GetCorrelationId()}, result.Get(), response);
    }

    /// Answers a call that ended by an exception.
    std::string Answer(const std::exception_ptr& exception) {
        std::string response;
        Pellum::Ref<MethodFault> fault = Translate(m_refusal ? m_refusal : exception);
        try {
            m_codec.EncodeFault(*fault, m_version, GetCorrelationId(), response);
        } catch (const MessageException&) {
            fault = MakeSystemError(std::current_exception());
            response.clear();
            m_codec.EncodeFault(*fault, nullptr, GetCorrelationId(), response);
        }
        return response;
    }

private:
    enum class Stage { Reading, Running, Answering };

    std::string_view GetCorrelationId() const {
        return m_context.Get() != nullptr ? std::string_view(m_context->GetCorrelationId())
                                          : std::string_view();
    }

    RequestForm Begin(RequestHeader&& header) {
        MakeContext(header);
        FindTarget(header);
        FindCallee(header);
        m_call.emplace(*m_context, *m_target, *m_method, m_arrival.cancelled);
        const MethodDescriptor* const descriptor = m_method->GetMethodDescriptor();
        const bool isForAnybody = descriptor != nullptr && descriptor->privilege != nullptr
                               && std::strcmp(descriptor->privilege, kAnonymousPrivilege) == 0;
        if (!isForAnybody) {
            const ServerCall::Scope scope(*m_call);
            m_dispatcher.m_policy->Check(*m_call);
        }
        return {*m_method, m_version};
    }

    void MakeContext(RequestHeader& header) {
        RequestContext::Values values;
        values.sessionKey = std::move(header.sessionKey);
        values.locale = std::move(header.locale);
        const bool isTooLong = header.correlationId.size() > kLongestCorrelationId;
        values.correlationId = header.correlationId.empty() || isTooLong
                                 ? m_dispatcher.m_correlationIds->Next()
                                 : std::move(header.correlationId);
        if (header.timeout) {
            values.deadline = m_arrival.receivedAt + *header.timeout;
        }
        values.version = TypeRegistry::Instance().FindVersion(header.version);
        m_version = values.version;
        m_context = Pellum::MakeRef<RequestContext>(std::move(values));
        if (isTooLong) {
            throw InvalidRequest::Exception(new InvalidRequest(
                "the correlation identifier is longer than " + std::to_string(kLongestCorrelationId)
                + " bytes"));
        }
        if (m_version == nullptr && !header.version.empty()) {
            throw InvalidRequest::Exception(
                new InvalidRequest("there is no version " + Quote(header.version)));
        }
    }

    void FindTarget(const RequestHeader& header) {
        const ManagedObjectType* const type = FindManagedType(header.targetType);
        m_target = type != nullptr ? m_dispatcher.m_objects->Find(*type, header.targetId) : nullptr;
        if (m_target.Get() == nullptr) {
            throw ManagedObjectNotFound::Exception(
                new ManagedObjectNotFound(header.targetType, header.targetId));
        }
    }

    void FindCallee(const RequestHeader& header) {
        m_method = FindMethod(header);
        const Type& type = *m_target->_GetType();
        const bool isThere = m_method != nullptr && type.IsA(&m_method->GetOwner());
        if (isThere && m_method->IsPartOf(m_version) && m_method->GetOwner().IsPartOf(m_version)) {
            return;
        }
        std::string reason = header.isProperty ? "property " : "method ";
        reason += Quote(header.member) + " of " + Quote(header.declaringType);
        if (isThere) {
            reason += " is not part of version " + m_version->GetName();
        } else {
            reason += " is not one of a " + std::string(type.GetWireName());
            m_method = nullptr;
        }
        throw InvalidRequest::Exception(new InvalidRequest(reason));
    }

    void CheckRequired(const Arguments& arguments) const {
        const std::vector<CallValue>& parameters = m_method->GetParameters();
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            const PropertyDescriptor& parameter = *parameters[i].descriptor;
            if (arguments[i].Get() == nullptr && !parameter.IsOptional()
                && parameters[i].IsPartOf(m_version)) {
                throw InvalidArgument::Exception(
                    new InvalidArgument(parameter.name, "the argument is required"));
            }
        }
    }

    void Dispatch(Arguments& arguments, Pellum::Ref<Any>& result) {
        const DispatchFunction dispatch = m_method->GetOwner().GetManagedTypeInfo().dispatch;
        if (dispatch == nullptr) {
            throw Pellum::Exception(
                std::string(m_method->GetOwner().GetName()) + " has no dispatch function");
        }
        const ServerCall::Scope scope(*m_call);
        dispatch(m_target.Get(), m_method->GetIndex(), arguments, result);
    }

    /// The fault that tells the client of the exception.
    Pellum::Ref<MethodFault> Translate(const std::exception_ptr& exception) {
        try {
            std::rethrow_exception(exception);
        } catch (MethodFault::Exception& raised) {
            MethodFault* const fault = raised.GetFault();
            if (fault != nullptr && Passes(*fault)) {
                return Pellum::Ref<MethodFault>(fault);
            }
        } catch (const MessageException& error) {
            if (m_stage == Stage::Reading && !m_refusal) {
                return MakeFault(error);
            }
        } catch (...) { // NOLINT(bugprone-empty-catch): told below, like the others.
        }
        return MakeSystemError(exception);
    }

    bool Passes(const MethodFault& fault) const {
        const Type* const type = fault._GetDataType();
        return type != nullptr
            && (m_stage == Stage::Reading || IsRuntimeFault(*type) || m_method->Declares(*type));
    }

    Pellum::Ref<MethodFault> MakeSystemError(const std::exception_ptr& exception) const {
        const MoRef* const target = m_target.Get() != nullptr ? m_target->_GetRef() : nullptr;
        Report(m_dispatcher.m_log, {GetCorrelationId(), m_method, target, exception});
        return Pellum::MakeRef<SystemError>(kSystemErrorReason, GetCorrelationId());
    }

    const Dispatcher& m_dispatcher;
    const MessageCodec& m_codec;
    const Arrival& m_arrival;
    Stage m_stage = Stage::Reading;
    Pellum::Ref<RequestContext> m_context;
    const Version* m_version = nullptr;
    Pellum::Ref<ManagedObject> m_target;
    const ManagedMethod* m_method = nullptr;
    std::optional<ServerCall> m_call;
    std::exception_ptr m_refusal; ///< thrown before the arguments were read
};

Dispatcher::Dispatcher(ObjectTable* objects, AccessPolicy* policy, FailureLog log)
    : m_objects(objects),
      m_policy(policy),
      m_log(std::move(log)),
      m_correlationIds(std::make_unique<Rpc::CorrelationIds>()) {
    if (objects == nullptr || policy == nullptr) {
        throw Pellum::Exception("a dispatcher needs a table of objects and a policy");
    }
}

Dispatcher::~Dispatcher() = default;

std::string Dispatcher::Serve(
    const MessageCodec& codec, std::string_view request, const Arrival& arrival) const {
    Attempt attempt(*this, codec, arrival);
    try {
        std::string response;
        attempt.Run(request, response);
        return response;
    } catch (...) {
        return attempt.Answer(std::current_exception());
    }
}

} // namespace Tavik
