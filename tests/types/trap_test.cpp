#include "tavik/type/data_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tests/sample/api/bag_holder.h"
#include "tests/sample/api/level4.h"
#include "tests/sample/api/required_kinds.h"
#include "tests/support/death.h"
#include "types/api/core/computer_spec.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using Location = Morvane::ComputerSpec::LiveComputerLocation;

constexpr int kCount = 9;

/// The statement ends the process by the trap.
#define EXPECT_TRAP(statement)                                                                               \
    EXPECT_EXIT(statement, TestSupport::HasFailedFast, TestSupport::IsFailFastMessage(37))

class BadIndexDeathTest : public testing::TestWithParam<int> {
protected:
    BadIndexDeathTest() {
        GTEST_FLAG_SET(death_test_style, "fast");
        Tavik::TypeRegistry::Instance().Load();
        m_record = &Tavik::GetDoType<Location>()->GetDataTypeInfo();
    }

    const Tavik::DataTypeInfo* m_record;
    Pellum::Ref<Location> m_object = Pellum::MakeRef<Location>();
    // Fits any property.
    alignas(std::max_align_t) unsigned char m_value[64] = {};
};

TEST_P(BadIndexDeathTest, EndsTheProcess) {
    EXPECT_TRAP(m_record->get(m_object.Get(), GetParam(), m_value));
    EXPECT_TRAP(m_record->fieldPointer(m_object.Get(), GetParam()));
    EXPECT_TRAP(m_record->set(m_object.Get(), GetParam(), m_value));
    EXPECT_TRAP(m_record->swap(m_object.Get(), GetParam(), m_value));
    EXPECT_TRAP(m_record->reset(m_object.Get(), GetParam()));
    EXPECT_TRUE(m_record->isSet(m_object.Get(), GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    Indexes, BadIndexDeathTest, testing::Values(kCount, kCount + 1, -1, INT_MAX, INT_MIN));

TEST(RequiredPropertyDeathTest, IsNotReset) {
    Tavik::TypeRegistry::Instance().Load();
    const auto object = Pellum::MakeRef<Location>();
    const Tavik::DataTypeInfo& record = Tavik::GetDoType<Location>()->GetDataTypeInfo();
    EXPECT_TRAP(record.reset(object.Get(), 0));
    EXPECT_TRAP(record.reset(object.Get(), 5));
    const auto holder = Pellum::MakeRef<Sample::BagHolder>();
    EXPECT_TRAP(Tavik::GetDoType<Sample::BagHolder>()->GetDataTypeInfo().reset(holder.Get(), 0));
    // A type's own properties only: those of its bases have functions of their own.
    const auto derived = Pellum::MakeRef<Sample::Level3>();
    EXPECT_TRAP(Tavik::GetDoType<Sample::Level3>()->GetDataTypeInfo().reset(derived.Get(), 2));
}

} // namespace
