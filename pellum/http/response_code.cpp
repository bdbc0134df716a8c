#include "pellum/http/response_code.h"

#include <algorithm>
#include <iterator>

namespace Pellum::Http::ResponseCode {

namespace {

/// By rising code.
constexpr Info kAll[] = {
    kContinue,
    kSwitchingProtocols,
    kOk,
    kCreated,
    kAccepted,
    kNoContent,
    kPartialContent,
    kMovedPermanently,
    kFound,
    kSeeOther,
    kNotModified,
    kTemporaryRedirect,
    kPermanentRedirect,
    kBadRequest,
    kUnauthorized,
    kForbidden,
    kNotFound,
    kMethodNotAllowed,
    kNotAcceptable,
    kRequestTimeout,
    kConflict,
    kGone,
    kLengthRequired,
    kPreconditionFailed,
    kContentTooLarge,
    kUriTooLong,
    kUnsupportedMediaType,
    kRangeNotSatisfiable,
    kUnprocessableContent,
    kTooManyRequests,
    kInternalServerError,
    kNotImplemented,
    kBadGateway,
    kServiceUnavailable,
    kGatewayTimeout,
    kHttpVersionNotSupported,
    kInsufficientStorage,
};

constexpr bool ByCode(const Info& left, const Info& right) noexcept {
    return left.code < right.code;
}

static_assert(std::is_sorted(std::begin(kAll), std::end(kAll), ByCode));

} // namespace

const Info* Find(int code) noexcept {
    const Info* const found = std::lower_bound(std::begin(kAll), std::end(kAll), Info{code, nullptr}, ByCode);
    return found != std::end(kAll) && found->code == code ? found : nullptr;
}

} // namespace Pellum::Http::ResponseCode
