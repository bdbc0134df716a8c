#include "types/api/agent/internal/disk_attach_point.h"
#include "types/api/core/computer_spec.h"

#include <gtest/gtest.h>

#include <new>
#include <utility>

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

/// One that clones itself by its own copy constructor.
class NotedPoint : public Morvane::Agent::Internal::DiskAttachPoint {
public:
    NotedPoint() = default;

    NotedPoint* _Clone() const override { return Tavik::CloneObject(*this); }

protected:
    friend struct Tavik::ObjectCloner;
    NotedPoint(const NotedPoint&) = default;
};

TEST(DerivedClass, IsClonedHoweverDeep) {
    constexpr int kDepth = 200'000;
    Pellum::Ref<NotedPoint> point = Pellum::MakeRef<NotedPoint>();
    for (int i = 1; i < kDepth; ++i) {
        auto next = Pellum::MakeRef<NotedPoint>();
        next->SetHistory(point.Get());
        point = std::move(next);
    }
    const Pellum::Ref<NotedPoint> clone(point->_Clone());
    int depth = 0;
    for (const auto* part = dynamic_cast<const NotedPoint*>(clone.Get()); part != nullptr;
         part = dynamic_cast<const NotedPoint*>(part->GetHistory())) {
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
}

/// One that copies a part of itself by its base, uses the copy's parts and drops it.
class PickyPoint : public Morvane::Agent::Internal::DiskAttachPoint {
public:
    PickyPoint* _Clone() const override {
        const Pellum::Ref<DiskAttachPoint> copy(DiskAttachPoint::_Clone());
        auto* mine = new PickyPoint;
        mine->SetBus(copy->GetBus());
        mine->SetHistory(copy->GetHistory());
        return mine;
    }
};

/// Around the depth where parts of a clone are put off.
TEST(DerivedClass, MayCloneItselfInPartsAtAnyDepth) {
    using Point = Morvane::Agent::Internal::DiskAttachPoint;
    for (int depth = 58; depth <= 70; ++depth) {
        Pellum::Ref<Point> point = Pellum::MakeRef<PickyPoint>();
        point->SetHistory(Pellum::MakeRef<Point>().Get());
        for (int i = 0; i < depth; ++i) {
            auto next = Pellum::MakeRef<Point>();
            next->SetHistory(point.Get());
            point = std::move(next);
        }
        const Pellum::Ref<Point> clone(point->_Clone());
        EXPECT_TRUE(point->_IsEqual(clone.Get(), false)) << depth;
    }
}

/// One that does not clone itself the first time.
class FlakyPoint : public NotedPoint {
public:
    FlakyPoint* _Clone() const override {
        if (!m_hasFailed) {
            m_hasFailed = true;
            throw std::bad_alloc();
        }
        return Tavik::CloneObject(*this);
    }

private:
    friend struct Tavik::ObjectCloner;

    mutable bool m_hasFailed = false;
};

TEST(DerivedClass, IsClonedWholeAfterOneThatThrew) {
    using Point = Morvane::Agent::Internal::DiskAttachPoint;
    Pellum::Ref<Point> history = Pellum::MakeRef<Point>();
    for (int i = 0; i < 100; ++i) {
        auto next = Pellum::MakeRef<Point>();
        next->SetHistory(history.Get());
        history = std::move(next);
    }
    const auto flaky = Pellum::MakeRef<FlakyPoint>();
    flaky->SetHistory(history.Get());
    const auto holder = Pellum::MakeRef<Point>();
    holder->SetHistory(flaky.Get());
    EXPECT_THROW(static_cast<void>(holder->_Clone()), std::bad_alloc);
    const Pellum::Ref<Point> clone(flaky->_Clone());
    EXPECT_TRUE(flaky->_IsEqual(clone.Get(), false));
}

} // namespace
