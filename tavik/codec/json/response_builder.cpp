#include "tavik/codec/json/response_builder.h"

#include "tavik/codec/json/message_members.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/version.h"

namespace Tavik::Json {

namespace {

constexpr unsigned kResultBit = 0x1;
constexpr unsigned kFaultBit = 0x2;
constexpr unsigned kCorrelationBit = 0x4;

bool IsAlwaysThere(const CallValue& result) {
    switch (result.descriptor->type->kind) {
    case TypeKind::Data:
    case TypeKind::Fault:
    case TypeKind::Managed:
    case TypeKind::Any: return false;
    default: return !result.descriptor->IsOptional() && !result.descriptor->IsArray();
    }
}

} // namespace

ResponseBuilder::ResponseBuilder(const DecodeLimits& limits, const ResponseForm& form)
    : MessageBuilder(limits), m_form(form) {
    m_options.version = form.version;
}

ResponseBuilder::~ResponseBuilder() = default;

MessageBuilder::Content ResponseBuilder::BeginMember(std::string_view name) {
    m_member = {};
    if (name == Member::kResult) {
        MarkOnce(kResultBit, name);
        m_member = Member::kResult;
        if (m_form.method.GetResult().descriptor == nullptr) {
            throw Refusal{std::string(m_form.method.GetName()) + " has no result"};
        }
        ExpectValue(m_form.method.GetResult().type);
        return Content::Value;
    }
    if (name == Member::kFault) {
        MarkOnce(kFaultBit, name);
        m_member = Member::kFault;
        ExpectValue(GetDoType<MethodFault>());
        return Content::Value;
    }
    if (name == Member::kCorrelation) {
        MarkOnce(kCorrelationBit, name);
        m_member = Member::kCorrelation;
        return Content::Text;
    }
    RefuseUnknown(
        "a response", name,
        {std::string(Member::kResult), std::string(Member::kFault), std::string(Member::kCorrelation)});
}

void ResponseBuilder::TakeText(const Token& token) {
    ExpectString(token);
    m_correlationId = token.text;
}

void ResponseBuilder::TakeValue(const Pellum::Ref<Any>& value) {
    if (m_member == Member::kFault) {
        m_response.fault.Reset(static_cast<MethodFault*>(value.Get()));
    } else {
        m_response.result = value;
    }
}

void ResponseBuilder::Finish() {
    m_member = {};
    const CallValue& result = m_form.method.GetResult();
    if (m_response.fault.Get() != nullptr) {
        if (m_response.result.Get() != nullptr) {
            throw Refusal{"the response has both a result and a fault"};
        }
    } else if (m_response.result.Get() == nullptr && result.descriptor != nullptr && IsAlwaysThere(result)) {
        throw Refusal{std::string("the response lacks the result of ") + m_form.method.GetName()};
    }
}

std::string ResponseBuilder::GetMemberPath() const {
    return std::string(m_member);
}

} // namespace Tavik::Json
