#include "tests/rpc/desk.h"

#include <gtest/gtest.h>

namespace {

TEST(Smoke, SyncAndAsync) {
    Desktop desk;
    const auto stub = desk.Connect();
    EXPECT_EQ(stub->GetName(), "printer 1");
    const auto sheet = Pellum::MakeRef<Desk::Sheet>();
    sheet->SetTitle("a");
    sheet->SetPassword("b");
    EXPECT_EQ(stub->Print(sheet.Get(), 3, "4711"), 3);
    EXPECT_NE(desk.printer->lastSheet.Get(), sheet.Get());
    EXPECT_EQ(desk.printer->lastSheet->ToString(), sheet->ToString());
    auto future =
        Tavik::StartFuture<std::int64_t>([&](auto& done, auto& item) { stub->Align(5, done, item); });
    EXPECT_EQ(future.Get(), 5'000'000'000);
}

} // namespace
