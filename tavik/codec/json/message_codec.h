#pragma once

#include "tavik/codec/json/json.h"
#include "tavik/rpc/message_codec.h"
#include "tavik_json/export.h"

namespace Tavik::Json {

/// Messages as JSON, one document each, in the form of `Encode`:
///
///     {"method": "MorvaneLogin", "of": "MorvaneSessionManager", "on": {"mo": "MorvaneSessionManager", "id":
///     "sessions"}, "version": "morvane.version.version9", "session": "...", "locale": "en_US",
///     "correlation": "5f2c-1", "timeoutMs": 1500, "arguments": {"userName": "anna", "password": "..."}}
///
///     {"correlation": "5f2c-1", "result": {"key": "...", "userName": "anna"}}
///     {"correlation": "5f2c-1", "fault": {"$type": "MorvaneInvalidLogin"}}
///
/// A property is read with "property" in place of "method". Members that are empty are left out, like unset
/// arguments; `null` reads as left out. The members of a request may come in any order, but "arguments" is
/// the last one: how it is read depends on the others. Unknown members and those that come twice are errors.
class TAVIK_JSON_API MessageCodec final : public Tavik::MessageCodec {
public:
    /// `limits` are for each message that is read; depth is that of one argument or result.
    explicit MessageCodec(const DecodeLimits& limits = {});
    ~MessageCodec() override;

    void EncodeRequest(const Request& request, std::string& out) const override;
    Arguments DecodeRequest(std::string_view message, const BeginFunction& begin) const override;
    void EncodeResult(const ResponseForm& form, const Any* result, std::string& out) const override;
    void EncodeFault(
        const MethodFault& fault, const Version* version, std::string_view correlationId,
        std::string& out) const override;
    Response DecodeResponse(std::string_view message, const ResponseForm& form) const override;
    std::string PrintRequest(std::string_view message) const override;
    std::string PrintResponse(std::string_view message, const ManagedMethod& method) const override;

private:
    DecodeLimits m_limits;
};

} // namespace Tavik::Json
