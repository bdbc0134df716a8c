#include "types/api/core/computer_spec.h"

#include <gtest/gtest.h>

/// What users derive from generated classes: the copy constructor is theirs to use.
namespace {

using Location = Morvane::ComputerSpec::LiveComputerLocation;

class NotedLocation : public Location {
public:
    NotedLocation() = default;
    NotedLocation(const NotedLocation&) = default;

    std::string note;
};

class NotedSpec : public Morvane::ComputerSpec {
public:
    NotedSpec() = default;
    NotedSpec(const NotedSpec&) = default;
};

TEST(DerivedClass, CopiesDeeply) {
    NotedLocation location;
    location.SetHostname("alpha");
    location.SetPort(902);
    location.SetVerifyPeer(false);
    location.note = "mine";
    const NotedLocation copy(location);
    EXPECT_EQ(copy.GetHostname(), "alpha");
    EXPECT_EQ(copy.GetPort(), 902);
    EXPECT_NE(copy.PeekVerifyPeer(), nullptr);
    EXPECT_EQ(copy.PeekUsername(), nullptr);
    EXPECT_EQ(copy.note, "mine");
    EXPECT_EQ(copy.GetRefCount(), 0);

    NotedSpec spec;
    spec.SetLocation(Pellum::Ref<Location>(location._Clone()).Get());
    const NotedSpec other(spec);
    EXPECT_NE(other.GetLocation(), spec.GetLocation());
    EXPECT_TRUE(other.GetLocation()->_IsEqual(spec.GetLocation(), false));
}

} // namespace
