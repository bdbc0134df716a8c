#include "tavik/codec/json/message_builder.h"

#include "tavik/codec/json/wording.h"
#include "tavik/type/type.h"

#include <utility>

namespace Tavik::Json {

namespace {

DecodeOptions MakeOptions(const DecodeLimits& limits) {
    DecodeOptions options;
    options.limits = limits;
    return options;
}

} // namespace

MessageBuilder::MessageBuilder(const DecodeLimits& limits)
    : m_options(MakeOptions(limits)), m_value(m_options) {}

MessageBuilder::~MessageBuilder() = default;

void MessageBuilder::Refuse(const char* found) const {
    switch (m_place == Place::Start ? Content::Members : m_content) {
    case Content::Text: throw Refusal{std::string("expected a string, found ") + found};
    default: throw Refusal{std::string("expected an object, found ") + found};
    }
}

void MessageBuilder::BeginObject() {
    if (m_place == Place::Start) {
        m_place = Place::Message;
    } else if (m_place == Place::Value) {
        m_value.BeginObject();
    } else if (m_content == Content::Value) {
        m_outer = std::exchange(m_place, Place::Value);
        m_value.BeginObject();
    } else if (m_content == Content::Members && m_place == Place::Message) {
        EnterMembers();
        m_place = Place::Members;
    } else {
        Refuse("an object");
    }
}

void MessageBuilder::EndObject() {
    if (m_place == Place::Value) {
        m_value.EndObject();
        TakeCompleteValue();
    } else if (m_place == Place::Members) {
        m_place = Place::Message;
        LeaveMembers();
    } else {
        Finish();
    }
}

void MessageBuilder::BeginArray() {
    if (m_place != Place::Value) {
        if (m_place == Place::Start || m_content != Content::Value) {
            Refuse("an array");
        }
        m_outer = std::exchange(m_place, Place::Value);
    }
    m_value.BeginArray();
}

void MessageBuilder::EndArray() {
    m_value.EndArray();
    TakeCompleteValue();
}

void MessageBuilder::Key(std::string_view name) {
    if (m_place == Place::Value) {
        m_value.Key(name);
    } else {
        m_content = BeginMember(name);
    }
}

void MessageBuilder::Scalar(const Token& token) {
    if (m_place == Place::Start || (m_place == Place::Message && m_content == Content::Members)) {
        Refuse(token.Describe());
    }
    if (m_place != Place::Value && m_content == Content::Text) {
        TakeText(token);
        return;
    }
    if (m_place != Place::Value) {
        m_outer = std::exchange(m_place, Place::Value);
    }
    m_value.Scalar(token);
    TakeCompleteValue();
}

void MessageBuilder::Null() {
    if (m_place == Place::Start) {
        Refuse("null");
    }
    if (m_place == Place::Value) {
        m_value.Null();
    } else if (m_content == Content::Value) {
        TakeValue(nullptr); // what is null reads as unset
    }
}

void MessageBuilder::TakeCompleteValue() {
    if (m_value.IsComplete()) {
        TakeValue(m_value.GetResult());
        m_place = m_outer;
    }
}

void MessageBuilder::ExpectValue(const Type* type) {
    if (type == nullptr) {
        throw Refusal{"no library has registered the type of this value"};
    }
    m_value.Restart(type);
}

void MessageBuilder::RefuseUnknown(
    const char* owner, std::string_view name, const std::vector<std::string>& known) {
    throw Refusal{std::string(owner) + " has no member " + Quote(name) + DidYouMean(name, known)};
}

void MessageBuilder::ExpectString(const Token& token) {
    if (token.kind != Token::Kind::String) {
        throw Refusal{std::string("expected a string, found ") + token.Describe()};
    }
}

void MessageBuilder::MarkOnce(unsigned bit, std::string_view name) {
    if ((m_seen & bit) != 0) {
        throw Refusal{"there is a second member " + Quote(name)};
    }
    m_seen |= bit;
}

std::string MessageBuilder::GetPath() const {
    std::string path = m_place == Place::Start ? std::string() : GetMemberPath();
    if (m_place == Place::Value) {
        const std::string inner = m_value.GetPath();
        path += inner.empty() || inner.front() == '[' ? "" : ".";
        path += inner;
    }
    return path;
}

} // namespace Tavik::Json
