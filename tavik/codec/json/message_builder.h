#pragma once

#include "tavik/codec/json/event_parser.h"
#include "tavik/codec/json/value_builder.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik::Json {

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

    /// Throws over a name that `owner` has no member of; `known` are those that it has.
    [[noreturn]] static void RefuseUnknown(
        const char* owner, std::string_view name, const std::vector<std::string>& known);

    /// Throws when there was one of the bits already.
    void MarkOnce(unsigned bit, std::string_view name);

    /// Throws unless the token is a string.
    static void ExpectString(const Token& token);

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

} // namespace Tavik::Json
