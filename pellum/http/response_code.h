#pragma once

#include "pellum/export.h"

/// The status codes of HTTP.
namespace Pellum::Http::ResponseCode {

struct Info {
    int code;
    /// The reason phrase, a constant.
    const char* reason;
};

inline constexpr Info kContinue{100, "Continue"};
inline constexpr Info kSwitchingProtocols{101, "Switching Protocols"};
inline constexpr Info kOk{200, "OK"};
inline constexpr Info kCreated{201, "Created"};
inline constexpr Info kAccepted{202, "Accepted"};
inline constexpr Info kNoContent{204, "No Content"};
inline constexpr Info kPartialContent{206, "Partial Content"};
inline constexpr Info kMovedPermanently{301, "Moved Permanently"};
inline constexpr Info kFound{302, "Found"};
inline constexpr Info kSeeOther{303, "See Other"};
inline constexpr Info kNotModified{304, "Not Modified"};
inline constexpr Info kTemporaryRedirect{307, "Temporary Redirect"};
inline constexpr Info kPermanentRedirect{308, "Permanent Redirect"};
inline constexpr Info kBadRequest{400, "Bad Request"};
inline constexpr Info kUnauthorized{401, "Unauthorized"};
inline constexpr Info kForbidden{403, "Forbidden"};
inline constexpr Info kNotFound{404, "Not Found"};
inline constexpr Info kMethodNotAllowed{405, "Method Not Allowed"};
inline constexpr Info kNotAcceptable{406, "Not Acceptable"};
inline constexpr Info kRequestTimeout{408, "Request Timeout"};
inline constexpr Info kConflict{409, "Conflict"};
inline constexpr Info kGone{410, "Gone"};
inline constexpr Info kLengthRequired{411, "Length Required"};
inline constexpr Info kPreconditionFailed{412, "Precondition Failed"};
inline constexpr Info kContentTooLarge{413, "Content Too Large"};
inline constexpr Info kUriTooLong{414, "URI Too Long"};
inline constexpr Info kUnsupportedMediaType{415, "Unsupported Media Type"};
inline constexpr Info kRangeNotSatisfiable{416, "Range Not Satisfiable"};
inline constexpr Info kUnprocessableContent{422, "Unprocessable Content"};
inline constexpr Info kTooManyRequests{429, "Too Many Requests"};
inline constexpr Info kInternalServerError{500, "Internal Server Error"};
inline constexpr Info kNotImplemented{501, "Not Implemented"};
inline constexpr Info kBadGateway{502, "Bad Gateway"};
inline constexpr Info kServiceUnavailable{503, "Service Unavailable"};
inline constexpr Info kGatewayTimeout{504, "Gateway Timeout"};
inline constexpr Info kHttpVersionNotSupported{505, "HTTP Version Not Supported"};
inline constexpr Info kInsufficientStorage{507, "Insufficient Storage"};

/// The entry of a code, a constant; null for a code that is not in the list above.
[[nodiscard]] PELLUM_API const Info* Find(int code) noexcept;

} // namespace Pellum::Http::ResponseCode
