#include "tests/sample/api/node.h"
#include "tests/sample/api/required_kinds.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/diagnostic_manager.h"

#include <gtest/gtest.h>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Location = Morvane::ComputerSpec::LiveComputerLocation;

TEST(Accessors, OfADefaultObjectAnswerUnset) {
    const auto location = MakeRef<Location>();
    EXPECT_EQ(location->PeekPort(), nullptr);
    int port = 17;
    EXPECT_FALSE(location->GetPort(port));
    EXPECT_EQ(port, 17);
    EXPECT_EQ(location->PeekVerifyPeer(), nullptr);
    EXPECT_EQ(location->PeekUsername(), nullptr);
    EXPECT_EQ(location->GetHostname(), "");
    EXPECT_EQ(location->PeekHostname(), &location->GetHostname());
}

TEST(Accessors, OfRequiredValues) {
    const auto kinds = MakeRef<Sample::RequiredKinds>();
    EXPECT_EQ(kinds->GetIntValue(), 0);
    EXPECT_FALSE(kinds->IsBooleanValue());
    EXPECT_EQ(kinds->GetEnumValue(), Sample::Colour::red);
    kinds->SetLongValue(INT64_MIN);
    EXPECT_EQ(*kinds->PeekLongValue(), INT64_MIN);
    std::int64_t number = 5;
    kinds->SwapLongValue(&number);
    EXPECT_EQ(number, INT64_MIN);
    EXPECT_EQ(kinds->GetLongValue(), 5);
    kinds->SetStringValue("one");
    std::string text = "two";
    kinds->SwapStringValue(&text);
    EXPECT_EQ(text, "one");
    EXPECT_EQ(kinds->GetStringValue(), "two");
    kinds->SetStringValue(kinds->GetStringValue());
    EXPECT_EQ(kinds->GetStringValue(), "two");
    bool flag = true;
    kinds->SwapBooleanValue(&flag);
    EXPECT_TRUE(kinds->IsBooleanValue());
    EXPECT_FALSE(flag);
}

TEST(Accessors, OfOptionalValues) {
    const auto location = MakeRef<Location>();
    location->SetPort(902);
    EXPECT_EQ(*location->PeekPort(), 902);
    location->SetPort(Pellum::Optional<int>());
    EXPECT_EQ(location->PeekPort(), nullptr);

    location->SetVerifyPeer(false);
    bool verify = true;
    EXPECT_TRUE(location->IsVerifyPeer(verify));
    EXPECT_FALSE(verify);
    location->SetVerifyPeer(Pellum::Optional<bool>());
    verify = true;
    EXPECT_FALSE(location->IsVerifyPeer(verify));
    EXPECT_TRUE(verify);

    location->SetPassword("p");
    Pellum::Optional<std::string> other;
    location->SwapPassword(&other);
    EXPECT_FALSE(location->GetPassword().IsSet());
    EXPECT_EQ(other.GetValue(), "p");
    location->SwapPassword(&other);
    location->UnsetPassword();
    EXPECT_EQ(location->PeekPassword(), nullptr);
}

TEST(Accessors, OfObjectsCountThem) {
    const auto spec = MakeRef<Morvane::ComputerSpec>();
    EXPECT_EQ(spec->GetLocation(), nullptr);
    const auto location = MakeRef<Location>();
    spec->SetLocation(location.Get());
    EXPECT_EQ(location->GetRefCount(), 2);
    spec->SetLocation(spec->GetLocation());
    EXPECT_EQ(location->GetRefCount(), 2);
    Ref<Morvane::ComputerSpec::ComputerLocation> other;
    spec->SwapLocation(&other);
    EXPECT_EQ(spec->PeekLocation(), nullptr);
    EXPECT_EQ(other.Get(), location.Get());
    EXPECT_EQ(location->GetRefCount(), 2);
    spec->SetLocation(location.Get());
    spec->SetLocation(nullptr);
    EXPECT_EQ(location->GetRefCount(), 2);

    // The only count is the holder's: it is taken before the old one is given up.
    const auto node = MakeRef<Sample::Node>();
    node->SetN(MakeRef<Sample::Node>().Get());
    node->SetN(node->GetN());
    EXPECT_EQ(node->GetN()->GetRefCount(), 1);
}

TEST(Accessors, OfArraysMakeThemOnRead) {
    const auto node = MakeRef<Sample::Node>();
    const Sample::Node& reader = *node;
    EXPECT_EQ(reader.GetPtrChildren(), nullptr);
    EXPECT_FALSE(reader.IsSetChildren());
    EXPECT_EQ(reader.PeekChildren(), nullptr);

    const Tavik::DataArray<Sample::Node>* made = reader.GetChildren();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->GetRefCount(), 1);
    EXPECT_EQ(node->GetChildren(), made);
    EXPECT_EQ(node->GetPtrChildren(), made);
    EXPECT_FALSE(reader.IsSetChildren());
    EXPECT_EQ(reader.PeekChildren(), nullptr);

    node->GetChildren()->Append(MakeRef<Sample::Node>().Get());
    EXPECT_TRUE(reader.IsSetChildren());
    EXPECT_EQ(reader.PeekChildren(), made);
    Ref<Tavik::DataArray<Sample::Node>> other;
    node->SwapChildren(&other);
    EXPECT_EQ(node->GetPtrChildren(), nullptr);
    node->SetChildren(other.Get());
    EXPECT_EQ(other->GetRefCount(), 2);

    const auto bundle = MakeRef<Morvane::DiagnosticManager::TaskLogBundleInfo>();
    bundle->GetContent()->Append(Morvane::DiagnosticManager::BundleContent::workerLogs);
    EXPECT_EQ((*bundle->PeekContent())[0], Morvane::DiagnosticManager::BundleContent::workerLogs);
    EXPECT_STREQ(Morvane::DiagnosticManager::BUNDLECONTENT_WORKERLOGS, "workerLogs");
    bundle->SetContent(nullptr);
    EXPECT_FALSE(bundle->IsSetContent());
}

} // namespace
