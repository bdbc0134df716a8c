#include "pellum/http/response_code.h"

#include <gtest/gtest.h>

namespace {

namespace ResponseCode = Pellum::Http::ResponseCode;

TEST(ResponseCodeTest, FindsEveryKindOfCodeAndNothingElse) {
    for (const auto& info :
         {ResponseCode::kContinue, ResponseCode::kOk, ResponseCode::kSeeOther, ResponseCode::kNotFound,
          ResponseCode::kInternalServerError, ResponseCode::kHttpVersionNotSupported}) {
        const auto* const found = ResponseCode::Find(info.code);
        ASSERT_NE(found, nullptr) << info.code;
        EXPECT_EQ(found->code, info.code);
        EXPECT_STREQ(found->reason, info.reason);
    }
    for (const int code : {-1, 0, 99, 418, 506, 1000}) {
        EXPECT_EQ(ResponseCode::Find(code), nullptr) << code;
    }
}

} // namespace
