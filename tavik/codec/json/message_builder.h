#pragma once

#include "tavik/codec/json/event_parser.h"
#include "tavik/codec/json/value_builder.h"
#include "tavik/rpc/message_codec.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik::Json {

/// Names of the members of messages.
namespace Member {

inline constexpr std::string_view kMethod = "method";
inline constexpr std::string_view kProperty = "property";
inline constexpr std::string_view kDeclaringType = "of";
inline constexpr std::string_view kTarget = "on";
inline constexpr std::string_view kTargetType = "mo";
inline constexpr std::string_view kTargetId = "id";
inline constexpr std::string_view kVersion = "version";
inline constexpr std::string_view kSession = "session";
inline constexpr std::string_view kLocale = "locale";
inline constexpr std::string_view kCorrelation = "correlation";
inline constexpr std::string_view kTimeout = "timeoutMs";
inline constexpr std::string_view kArguments = "arguments";
inline constexpr std::string_view kResult = "result";
inline constexpr std::string_view kFault = "fault";

} // namespace Member

/// Objects around a value in a message: the message, and the object of the arguments.
inline constexpr std::size_t kMessageDepth = 2;

/// What both kinds of messages have in common: an object whose members are texts, or hold values.
class MessageBuilder : public EventSink {
public:
    void BeginObject() final;
    void EndObject() final;
    void BeginArray() final;
    void EndArray() final;
    void Key(std::string_view name) final;
    void Scalar(const Token& token) final;
    void Null() final;
    std::string GetPath() const final;

protected:
    explicit MessageBuilder(const DecodeLimits& limits);
    ~MessageBuilder();

    /// What a member of the message holds.
    enum class Content {
        Text,    ///< a string or a number
        Members, ///< an object with members of the message's own
        Value,   ///< a value
    };

    /// A member of the message, or of the object in it that was entered last, is named: throws `Refusal` when
    /// none may come here.
    virtual Content BeginMember(std::string_view name) = 0;
    /// Its text.
    virtual void TakeText(const Token& token) = 0;
    /// Its value; null for an unset one.
    virtual void TakeValue(const Pellum::Ref<Any>& value) = 0;

    /// The object in it begins.
    virtual void EnterMembers() {}

    virtual void LeaveMembers() {}

    /// The message is complete.
    virtual void Finish() = 0;
    /// What the place is called that is being read: "arguments.userName".
    virtual std::string GetMemberPath() const = 0;

    /// The value that comes next has this type, which is null when nothing is known of it. `Refusal` then.
    void ExpectValue(const Type* type);

    /// Throws when there was one of the bits already.
    void MarkOnce(unsigned bit, std::string_view name);

    DecodeOptions m_options;

private:
    enum class Place { Start, Message, Members, Value };

    void TakeCompleteValue();
    [[noreturn]] void Refuse(const char* found) const;

    ValueBuilder m_value;
    Place m_place = Place::Start;
    Place m_outer = Place::Start; ///< around the value that is being read
    Content m_content = Content::Text;
    unsigned m_seen = 0;
};

/// Builds a request. The members of the header come in any order, the arguments last.
class RequestBuilder final : public MessageBuilder {
public:
    /// Both are borrowed and outlive the builder.
    RequestBuilder(const DecodeLimits& limits, const MessageCodec::BeginFunction& begin);
    ~RequestBuilder();

    Arguments& GetArguments() { return m_arguments; }

private:
    Content BeginMember(std::string_view name) override;
    void TakeText(const Token& token) override;
    void TakeValue(const Pellum::Ref<Any>& value) override;
    void EnterMembers() override;
    void LeaveMembers() override;
    void Finish() override;
    std::string GetMemberPath() const override;

    void BeginHeaderMember(std::string_view name);
    void BeginTargetMember(std::string_view name);
    void BeginArgument(std::string_view name);
    void BeginArguments();
    void TakeTimeout(const Token& token);

    const MessageCodec::BeginFunction& m_begin;
    RequestHeader m_header;
    std::string* m_text = nullptr; ///< where the text of the member goes; null for the timeout
    std::string_view m_member;     ///< of the message; a literal
    std::string_view m_inner;      ///< of the object in it; a literal, or an argument's declared name
    bool m_entered = false;
    bool m_begun = false; ///< the header is complete
    const ManagedMethod* m_method = nullptr;
    std::size_t m_parameter = 0; ///< whose argument comes next
    std::vector<bool> m_given;   ///< by parameter
    Arguments m_arguments;
};

/// Builds a response; its members come in any order.
class ResponseBuilder final : public MessageBuilder {
public:
    /// `form` is borrowed and outlives the builder.
    ResponseBuilder(const DecodeLimits& limits, const ResponseForm& form);
    ~ResponseBuilder();

    Response& GetResponse() { return m_response; }

    /// Empty when the response has none.
    const std::string& GetCorrelationId() const { return m_correlationId; }

private:
    Content BeginMember(std::string_view name) override;
    void TakeText(const Token& token) override;
    void TakeValue(const Pellum::Ref<Any>& value) override;
    void Finish() override;
    std::string GetMemberPath() const override;

    const ResponseForm& m_form;
    std::string_view m_member;
    std::string m_correlationId;
    Response m_response;
};

} // namespace Tavik::Json
