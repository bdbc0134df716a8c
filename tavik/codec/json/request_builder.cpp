#include "tavik/codec/json/request_builder.h"

#include "tavik/codec/json/message_members.h"
#include "tavik/codec/json/wording.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/version.h"

#include <charconv>
#include <cstdint>
#include <utility>

namespace Tavik::Json {

namespace {

/// Deadlines that are farther away are none.
constexpr std::int64_t kLongestTimeout = std::int64_t{1000} * 60 * 60 * 24 * 365;

/// A member of a request's header that is a text.
struct HeaderText {
    std::string_view name;
    std::string RequestHeader::*text;
};

constexpr HeaderText kHeaderTexts[] = {
    {Member::kMethod, &RequestHeader::member},
    {Member::kProperty, &RequestHeader::member},
    {Member::kDeclaringType, &RequestHeader::declaringType},
    {Member::kVersion, &RequestHeader::version},
    {Member::kSession, &RequestHeader::sessionKey},
    {Member::kLocale, &RequestHeader::locale},
    {Member::kCorrelation, &RequestHeader::correlationId},
};

// The bits of the members behind those.
constexpr unsigned kTargetBit = 0x100;
constexpr unsigned kTimeoutBit = 0x200;
constexpr unsigned kArgumentsBit = 0x400;
constexpr unsigned kTargetTypeBit = 0x800;
constexpr unsigned kTargetIdBit = 0x1000;

} // namespace

RequestBuilder::RequestBuilder(const DecodeLimits& limits, const MessageCodec::BeginFunction& begin)
    : MessageBuilder(limits), m_begin(begin) {}

RequestBuilder::~RequestBuilder() = default;

MessageBuilder::Content RequestBuilder::BeginMember(std::string_view name) {
    m_text = nullptr;
    if (!m_entered) {
        m_member = {};
        BeginHeaderMember(name);
        return m_member == Member::kTarget || m_member == Member::kArguments ? Content::Members
                                                                             : Content::Text;
    }
    m_inner = {};
    if (m_member == Member::kTarget) {
        BeginTargetMember(name);
        return Content::Text;
    }
    BeginArgument(name);
    return Content::Value;
}

void RequestBuilder::BeginHeaderMember(std::string_view name) {
    if (m_begun) {
        throw Refusal{"nothing comes after the arguments; found " + Quote(name)};
    }
    unsigned bit = 1;
    for (const HeaderText& row : kHeaderTexts) {
        if (name == row.name) {
            m_member = row.name;
            m_text = &(m_header.*row.text);
            const bool isMember = row.text == &RequestHeader::member;
            MarkOnce(isMember ? 0x1 : bit, name); // one of the two
            m_header.isProperty = isMember ? row.name == Member::kProperty : m_header.isProperty;
            return;
        }
        bit <<= 1U;
    }
    if (name == Member::kTarget) {
        MarkOnce(kTargetBit, name);
        m_member = Member::kTarget;
    } else if (name == Member::kTimeout) {
        MarkOnce(kTimeoutBit, name);
        m_member = Member::kTimeout;
    } else if (name == Member::kArguments) {
        MarkOnce(kArgumentsBit, name);
        m_member = Member::kArguments;
    } else {
        std::vector<std::string> known{
            std::string(Member::kTarget), std::string(Member::kTimeout), std::string(Member::kArguments)};
        for (const HeaderText& row : kHeaderTexts) {
            known.emplace_back(row.name);
        }
        RefuseUnknown("a request", name, known);
    }
}

void RequestBuilder::BeginTargetMember(std::string_view name) {
    if (name == Member::kTargetType) {
        MarkOnce(kTargetTypeBit, name);
        m_inner = Member::kTargetType;
        m_text = &m_header.targetType;
    } else if (name == Member::kTargetId) {
        MarkOnce(kTargetIdBit, name);
        m_inner = Member::kTargetId;
        m_text = &m_header.targetId;
    } else {
        throw Refusal{"a reference has the members \"mo\" and \"id\" only, found " + Quote(name)};
    }
}

void RequestBuilder::BeginArgument(std::string_view name) {
    const std::vector<CallValue>& parameters = m_method->GetParameters();
    // Arguments mostly come in the order of the parameters.
    std::size_t position = m_parameter;
    if (position >= parameters.size() || name != parameters[position].descriptor->name) {
        position = 0;
        while (position < parameters.size() && name != parameters[position].descriptor->name) {
            ++position;
        }
    }
    if (position == parameters.size()) {
        std::vector<std::string> known;
        known.reserve(parameters.size());
        for (const CallValue& parameter : parameters) {
            known.emplace_back(parameter.descriptor->name);
        }
        throw Refusal{
            std::string(m_method->GetName()) + " has no parameter " + Quote(name) + DidYouMean(name, known)};
    }
    const CallValue& parameter = parameters[position];
    if (!parameter.IsPartOf(m_options.version)) {
        throw Refusal{
            "parameter " + Quote(name) + " of " + m_method->GetName() + ' '
            + NotPartOf(*m_options.version, parameter.version)};
    }
    if (m_given[position]) {
        throw Refusal{"there is a second member " + Quote(name)};
    }
    m_given[position] = true;
    m_inner = parameter.descriptor->name;
    m_parameter = position;
    ExpectValue(parameter.type);
}

void RequestBuilder::TakeText(const Token& token) {
    if (m_text == nullptr) {
        TakeTimeout(token);
    } else {
        ExpectString(token);
        *m_text = token.text;
    }
}

void RequestBuilder::TakeTimeout(const Token& token) {
    std::int64_t milliseconds = -1;
    const char* const end = token.text.data() + token.text.size();
    const auto [stop, error] = std::from_chars(token.text.data(), end, milliseconds);
    if (token.kind != Token::Kind::Number || error != std::errc() || stop != end || milliseconds < 0) {
        throw Refusal{"expected a whole number of milliseconds, which is not negative"};
    }
    if (milliseconds < kLongestTimeout) {
        m_header.timeout = std::chrono::milliseconds(milliseconds);
    }
}

void RequestBuilder::TakeValue(const Pellum::Ref<Any>& value) {
    m_arguments[m_parameter] = value;
    ++m_parameter;
    m_inner = {};
}

void RequestBuilder::EnterMembers() {
    if (m_member == Member::kArguments) {
        BeginArguments();
    }
    m_entered = true;
    m_inner = {};
}

void RequestBuilder::LeaveMembers() {
    m_entered = false;
    m_member = {};
}

void RequestBuilder::BeginArguments() {
    const auto require = [](const std::string& text, const char* what) {
        if (text.empty()) {
            throw Refusal{std::string("the request lacks ") + what};
        }
    };
    m_member = {};
    require(m_header.member, R"("method" or "property")");
    require(m_header.declaringType, R"("of")");
    require(m_header.targetType, R"("mo" of "on")");
    require(m_header.targetId, R"("id" of "on")");
    const RequestForm form = m_begin(std::move(m_header));
    m_begun = true;
    m_method = &form.method;
    m_options.version = form.version;
    m_arguments.resize(m_method->GetParameters().size());
    m_given.resize(m_arguments.size());
    m_member = Member::kArguments;
}

void RequestBuilder::Finish() {
    m_member = {};
    if (!m_begun) {
        BeginArguments();
    }
}

std::string RequestBuilder::GetMemberPath() const {
    std::string path(m_member);
    if (m_entered && !m_inner.empty()) {
        path += '.';
        path += m_inner;
    }
    return path;
}

} // namespace Tavik::Json
