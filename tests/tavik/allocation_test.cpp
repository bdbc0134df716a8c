#include "tavik/type/type_registry.h"
#include "tavik/value/compare.h"
#include "tavik/value/property_diff_set.h"
#include "tests/sample/api/badly_failed.h"
#include "tests/sample/api/many_kinds.h"
#include "tests/sample/api/node.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/random_object.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <thread>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Sample::Node;
using TestSupport::CountLiveBlocks;
using TestSupport::FailingAllocation;

/// Runs something again and again with one more allocation that succeeds, until none has failed. Nothing is
/// left over.
void WithEveryFailure(const std::function<void()>& run) {
    run(); // what is kept for later calls is allocated now
    for (int count = 1;; ++count) {
        const std::ptrdiff_t before = CountLiveBlocks();
        bool hasFailed = false;
        {
            const FailingAllocation failing(count);
            try {
                run();
            } catch (const std::bad_alloc&) {}
            hasFailed = failing.HasFailed();
        }
        ASSERT_EQ(CountLiveBlocks(), before) << "allocation " << count;
        if (!hasFailed) {
            ASSERT_GT(count, 1);
            return;
        }
    }
}

Ref<Node> MakeChain(int depth, const char* label) {
    auto chain = MakeRef<Node>();
    chain->SetLabel(label);
    for (int level = 1; level < depth; ++level) {
        auto parent = MakeRef<Node>();
        parent->SetN(chain.Get());
        parent->SetAny(MakeRef<Node>().Get());
        parent->GetChildren()->Append(MakeRef<Node>().Get());
        chain = parent;
    }
    return chain;
}

/// A copy is whole or there is none.
void ExpectCloneOrNothing(const Tavik::Any& value) {
    WithEveryFailure([&] {
        const Ref<Tavik::Any> clone(value._Clone());
        if (clone) {
            ASSERT_TRUE(value._IsEqual(clone.Get(), false));
        }
    });
}

TEST(OutOfMemory, LeavesNoHalfClone) {
    Tavik::TypeRegistry::Instance().Load();
    TestSupport::RandomObjects random(TestSupport::RandomObjects::Fill::All);
    for (const Tavik::DataObjectType* type : TestSupport::AllDataTypes()) {
        SCOPED_TRACE(type->GetName());
        const Ref<Tavik::DataObject> object(type->New());
        for (const Tavik::Property* property : type->GetProperties()) {
            random.SetRandom(*object, *property);
        }
        if (Tavik::OpenContent* content = type->GetOpenContent(*object)) {
            content->SetText("name", "a text that is too long to stand in a string itself");
        }
        ExpectCloneOrNothing(*object);
    }
}

TEST(OutOfMemory, LeavesNoHalfDeepClone) {
    ExpectCloneOrNothing(*MakeChain(150, "end"));
}

/// A fault is thrown without memory, too; only what the caller would own is not created.
TEST(OutOfMemory, StillRaisesFaults) {
    Tavik::TypeRegistry::Instance().Load();
    const auto fault = MakeRef<Sample::BadlyFailed>();
    fault->SetWhy("a text that is too long to stand in a string itself");
    WithEveryFailure([&] {
        try {
            fault->Throw();
        } catch (Sample::BadlyFailed::Exception& exception) {
            EXPECT_EQ(exception.GetFault(), fault.Get());
            EXPECT_EQ(std::string_view(exception.what()).find("sample.BadlyFailed"), 0U);
            EXPECT_THROW(exception.Throw(), Sample::BadlyFailed::Exception);
        }
    });
    {
        const Sample::BadlyFailed::Exception exception(fault.Get());
        const FailingAllocation failing(1);
        EXPECT_EQ(exception.Clone(), nullptr);
    }
    const FailingAllocation failing(1);
    EXPECT_EQ(fault->CreateException(), nullptr);
    EXPECT_EQ(fault->GetRefCount(), 1);
}

TEST(OutOfMemory, LeavesNoHalfFault) {
    const auto nodes = MakeRef<Tavik::DataArray<Node>>();
    const auto when = Pellum::System::DateTime::Now();
    const std::string text = "a text that is too long to stand in a string itself";
    WithEveryFailure([&] { const Sample::BadlyFailed::Exception exception(text, 1, nodes.Get()); });
    WithEveryFailure([&] {
        const Sample::ManyKinds::Exception exception(
            7, true, Sample::Colour::blue, when, {1, 2}, text, {}, {}, nullptr, nodes.Get(), nullptr, nullptr,
            nullptr, text, text, text, nullptr);
    });
    EXPECT_EQ(nodes->GetRefCount(), 1);
}

TEST(OutOfMemory, CreatesNothing) {
    Tavik::TypeRegistry::Instance().Load();
    for (const Tavik::DataObjectType* type : TestSupport::AllDataTypes()) {
        const FailingAllocation failing(1);
        EXPECT_EQ(type->New(), nullptr);
        const FailingAllocation failingAgain(1);
        EXPECT_EQ(type->NewArray(), nullptr);
    }
}

/// A comparison that ended early is forgotten by the next one. On threads of their own, where nothing has
/// been allocated before for work that is put off.
TEST(OutOfMemory, IsForgottenByTheNextComparison) {
    const Ref<Node> same = MakeChain(3, "same");
    for (int count = 1; count < 6; ++count) {
        SCOPED_TRACE(count);
        std::thread([&] {
            {
                const Ref<Node> one = MakeChain(100, "one");
                const Ref<Node> other = MakeChain(100, "other");
                const FailingAllocation failing(count);
                try {
                    EXPECT_FALSE(Tavik::AreEqualAnysInt(one.Get(), other.Get(), 0, false));
                } catch (const std::bad_alloc&) {}
            }
            const Ref<Node> clone(same->_Clone());
            EXPECT_TRUE(Tavik::AreEqualAnysInt(same.Get(), clone.Get(), 0, false));
        }).join();
    }
}

TEST(OutOfMemory, IsForgottenByTheNextDifference) {
    const Ref<Node> same = MakeChain(3, "same");
    const Ref<Node> clone(same->_Clone());
    for (int count = 60; count < 300; ++count) {
        std::thread([&] {
            {
                const Ref<Node> one = MakeChain(100, "one");
                const Ref<Node> other = MakeChain(100, "other");
                const FailingAllocation failing(count);
                try {
                    Tavik::PropertyDiffSet diffs;
                    one->_DiffProperties(other.Get(), "", diffs);
                } catch (const std::bad_alloc&) {}
            }
            Tavik::PropertyDiffSet diffs;
            same->_DiffProperties(clone.Get(), "", diffs);
            EXPECT_TRUE(diffs.IsEmpty());
        }).join();
    }
}

} // namespace
