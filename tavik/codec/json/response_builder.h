#pragma once

#include "tavik/codec/json/message_builder.h"
#include "tavik/rpc/message_codec.h"

#include <string>
#include <string_view>

namespace Tavik::Json {

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
