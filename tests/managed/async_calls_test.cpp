#include "tavik/type/type_registry.h"
#include "tests/managed/async_caller.h"

namespace {

TEST(AsyncCalls, OfEveryMethodAndGetterSendItWithItsArguments) {
    Tavik::TypeRegistry::Instance().Load();
    AsyncCaller caller;
    CallAll(caller);
    EXPECT_EQ(caller.GetCount(), 107 + 40);
}

} // namespace
