#include "pellum/object/object.h"

#include "pellum/object/ref.h"
#include "tests/support/counted.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using Pellum::MakeRef;
using Pellum::Object;
using Pellum::ObjectImpl;
using Pellum::Ref;
using TestSupport::Counted;

/// Two interfaces of one object that reach the shared base by different ways, as a managed object's do.
class Left : public virtual Object {
public:
    virtual int LeftValue() = 0;
};

class Right : public virtual Object {
public:
    virtual int RightValue() = 0;
};

class Both : public Counted, public Left, public Right {
public:
    int LeftValue() override { return 1; }

    int RightValue() override { return 2; }
};

TEST(ObjectTest, EveryInterfaceCountsTheSameObject) {
    const int aliveBefore = Counted::Alive();
    {
        const Ref<Left> left = new Both;
        const Ref<Right> right = dynamic_cast<Right*>(left.Get());
        ASSERT_TRUE(right);
        EXPECT_EQ(left->GetRefCount(), 2);
        EXPECT_EQ(left->LeftValue() + right->RightValue(), 3);
    }
    EXPECT_EQ(Counted::Alive(), aliveBefore);
}

TEST(ObjectTest, CopyHasItsOwnCount) {
    const auto original = MakeRef<Counted>();
    const auto copy = MakeRef<Counted>(*original);
    EXPECT_EQ(original->GetRefCount(), 1);
    EXPECT_EQ(copy->GetRefCount(), 1);
}

TEST(ObjectTest, NamesItsMostDerivedClass) {
    const Ref<Object> object = new Both;
    EXPECT_THAT(object->ToString(), testing::EndsWith("Both"));
}

TEST(ObjectTest, CountsFromManyThreads) {
    const int aliveBefore = Counted::Alive();
    {
        const auto shared = MakeRef<Counted>();
        constexpr std::size_t kThreads = 4;
        std::vector<std::thread> threads;
        threads.reserve(kThreads);
        for (std::size_t i = 0; i < kThreads; ++i) {
            threads.emplace_back([copy = shared] {
                for (int round = 0; round < 10'000; ++round) {
                    const Ref<const Counted> local = copy;
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(shared->GetRefCount(), 1);
    }
    EXPECT_EQ(Counted::Alive(), aliveBefore);
}

TEST(ObjectTest, LastOwnerSeesWhatTheOthersWrote) {
    class Sum : public ObjectImpl {
    public:
        explicit Sum(std::shared_ptr<int> result) : m_result(std::move(result)) {}

        Sum(const Sum&) = delete;
        Sum& operator=(const Sum&) = delete;

        ~Sum() override { *m_result = parts[0] + parts[1]; }

        int parts[2] = {0, 0};

    private:
        std::shared_ptr<int> m_result;
    };

    for (int round = 0; round < 200; ++round) {
        const auto result = std::make_shared<int>(0);
        auto sum = MakeRef<Sum>(result);
        std::thread first([own = sum]() mutable {
            own->parts[0] = 1;
            own.Reset();
        });
        std::thread second([own = std::move(sum)]() mutable {
            own->parts[1] = 2;
            own.Reset();
        });
        first.join();
        second.join();
        ASSERT_EQ(*result, 3);
    }
}

} // namespace
