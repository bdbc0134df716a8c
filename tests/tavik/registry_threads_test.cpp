#include "tavik/descriptor/builtin.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/scalar_array.h"
#include "tests/sample/api/node.h"
#include "tests/tavik/hand_made_library.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

using Tavik::TypeKind;

constexpr int kThreads = 8;

void OnThreads(const std::function<void()>& run) {
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            ++ready;
            while (ready < kThreads) {
                std::this_thread::yield();
            }
            run();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// Must be the first look-up of its process, which it is when tests run one by one; else it is one more.
TEST(FirstLookUp, IsMadeByManyThreads) {
    std::atomic<int> found{0};
    OnThreads([&] {
        const Tavik::Type* type = Tavik::TypeRegistry::Instance().FindByName("sample.Node");
        found += type != nullptr && type == Tavik::GetDoType<Sample::Node>() ? 1 : 0;
        EXPECT_EQ(Tavik::Type::GetArrayType(type), Tavik::Type::GetArrayType(type));
    });
    EXPECT_EQ(found, kThreads);
}

TEST(LookUp, WaitsForALoadThatIsRunning) {
    HandMadeLibrary& library = HandMadeLibrary::Make("slow");
    library.AddData({TypeKind::Data, "slow.Type", "SlowType", nullptr}, &Tavik::gOrlinDynamicDataTypeInfo);
    std::atomic<bool> isLoading{false};
    library.OnLoad([&] {
        isLoading = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    });
    library.Register();
    std::thread loader([] { Tavik::TypeRegistry::Instance().Load(); });
    while (!isLoading) {
        std::this_thread::yield();
    }
    EXPECT_NE(Tavik::TypeRegistry::Instance().FindByName("slow.Type"), nullptr);
    loader.join();
    EXPECT_EQ(library.GetLoadCount(), 1);
}

TEST(Objects, AreSharedByThreads) {
    Tavik::TypeRegistry::Instance().Load();
    const auto node = Pellum::MakeRef<Sample::Node>();
    node->SetLabel("shared");
    OnThreads([&] {
        for (int i = 0; i < 1000; ++i) {
            const Pellum::Ref<Tavik::Any> mine(node.Get());
            EXPECT_TRUE(mine->_IsEqual(node.Get(), false));
        }
        EXPECT_NE(Tavik::Type::GetArrayType(node->_GetType()), nullptr);
    });
    EXPECT_EQ(node->GetRefCount(), 1);
}

} // namespace
