#pragma once

#include "tavik/codec/json/message_builder.h"
#include "tavik/rpc/message_codec.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik::Json {

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

} // namespace Tavik::Json
