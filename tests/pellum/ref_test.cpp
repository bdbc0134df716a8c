#include "pellum/object/ref.h"

#include "tests/support/counted.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <unordered_set>
#include <utility>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using TestSupport::Counted;

class Incomplete;

/// Compiles only as long as a `Ref` does not need its type where it is a member.
class Holder {
public:
    Holder();
    ~Holder();
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    [[nodiscard]] bool HasObject() const { return m_object != nullptr; }

private:
    Ref<Incomplete> m_object;
};

class Incomplete : public Counted {};

Holder::Holder() : m_object(new Incomplete) {}

Holder::~Holder() = default;

class Derived : public Counted {};

/// Tells whether the holder of the last reference already shows its new state while the old object dies.
class Observer : public Counted {
public:
    explicit Observer(const Ref<Observer>& holder) : m_holder(holder) {}

    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    ~Observer() override { s_seenByDestructor = m_holder.Get(); }

    static inline const Observer* s_seenByDestructor = nullptr;

private:
    const Ref<Observer>& m_holder;
};

class RefTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(Counted::Alive(), m_aliveBefore) << "an object leaked or died twice";
    }

private:
    int m_aliveBefore = Counted::Alive();
};

static_assert(sizeof(Ref<Counted>) == sizeof(void*));
static_assert(std::is_nothrow_move_constructible_v<Ref<Counted>>);
static_assert(std::is_convertible_v<Ref<Derived>, Ref<Counted>>);
static_assert(!std::is_convertible_v<Ref<Counted>, Ref<Derived>>);
static_assert(!std::is_convertible_v<Ref<Counted>, bool>);

TEST_F(RefTest, FirstRefAdoptsANewObjectAndLastOneDestroysIt) {
    auto* const object = new Counted;
    EXPECT_EQ(object->GetRefCount(), 0);
    {
        const Ref<Counted> first(object);
        EXPECT_EQ(object->GetRefCount(), 1);
        const Ref<const Counted> second = first;
        EXPECT_EQ(object->GetRefCount(), 2);
    }
}

TEST_F(RefTest, AssigningWhatIsAlreadyHeldKeepsTheObject) {
    Ref<Counted> ref = MakeRef<Counted>();
    const auto& alias = ref;

    ref = alias;
    ref.Reset(ref.Get());
    EXPECT_EQ(ref->GetRefCount(), 1);

    auto& same = ref;
    ref = std::move(same);
    ASSERT_TRUE(ref);
    EXPECT_EQ(ref->GetRefCount(), 1);
}

TEST_F(RefTest, AssigningFromInsideTheHeldObjectKeepsTheNewOne) {
    struct Node : Counted {
        Ref<Node> next;
    };

    Ref<Node> head = MakeRef<Node>();
    head->next = MakeRef<Node>();
    auto* const second = head->next.Get();

    head = head->next;

    EXPECT_EQ(head.Get(), second);
    EXPECT_EQ(head->GetRefCount(), 1);
}

TEST_F(RefTest, StateIsNewBeforeTheOldObjectDies) {
    Ref<Observer> ref;
    ref = new Observer(ref);
    const auto next = MakeRef<Observer>(ref);
    ref = next;
    EXPECT_EQ(Observer::s_seenByDestructor, next.Get());
    ref.Reset();
}

TEST_F(RefTest, MovesPassTheCountOn) {
    Ref<Derived> source = MakeRef<Derived>();
    Ref<Counted> target = std::move(source);
    EXPECT_EQ(source.Get(), nullptr); // NOLINT(bugprone-use-after-move): the state after a move is the point
    EXPECT_EQ(target->GetRefCount(), 1);

    Ref<Counted> other = MakeRef<Counted>();
    swap(target, other);
    target = std::move(other);
    EXPECT_EQ(target->GetRefCount(), 1);
}

TEST_F(RefTest, DetachAndAdoptCarryOneCountAcross) {
    Ref<Counted> ref = MakeRef<Counted>();
    Counted* const object = ref.Detach();
    EXPECT_FALSE(ref);
    EXPECT_EQ(object->GetRefCount(), 1);

    const Ref<Counted> adopted = Ref<Counted>::Adopt(object);
    EXPECT_EQ(object->GetRefCount(), 1);
}

TEST_F(RefTest, ComparesAndHashesByAddress) {
    const auto derived = MakeRef<Derived>();
    const Ref<Counted> base = derived;
    const auto other = MakeRef<Counted>();

    EXPECT_TRUE(base == derived && base == derived.Get() && base != other && base != nullptr);
    EXPECT_TRUE(Ref<Counted>() == nullptr);
    EXPECT_EQ(std::set<Ref<Counted>>({base, derived, other}).size(), 2U);
    EXPECT_EQ(std::unordered_set<Ref<Counted>>({base, derived, other}).size(), 2U);
}

TEST_F(RefTest, MemberMayNameAnIncompleteClass) {
    const auto holder = std::make_unique<Holder>();
    EXPECT_TRUE(holder->HasObject());
}

} // namespace
