#include "tavik/type/data_object_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/diagnostic_manager.h"
#include "types/api/fault/morvane_fault.h"
#include "types/registry/version_record.h"

#include <gtest/gtest.h>

namespace {

using Location = Morvane::ComputerSpec::LiveComputerLocation;

TEST(BeforeAndAfterTheFirstLookUp, EverythingIsNullAndThenIsNot) {
    EXPECT_EQ(Tavik::GetDoType<Location>(), nullptr);
    EXPECT_EQ(Tavik::GetEnumType<Morvane::DiagnosticManager::BundleFormat>(), nullptr);
    EXPECT_EQ(Tavik::GetMoType<Morvane::DiagnosticManager>(), nullptr);
    EXPECT_EQ(Morvane::GetRcVersion(), nullptr);
    // Objects can be used all the same.
    const auto location = Pellum::MakeRef<Location>();
    EXPECT_EQ(location->_GetType(), nullptr);
    EXPECT_EQ(location->_GetDataType(), nullptr);
    EXPECT_EQ(Tavik::DataArray<Location>()._GetType(), nullptr);
    location->SetPort(902);
    const Pellum::Ref<Location> clone(location->_Clone());
    EXPECT_TRUE(location->_IsEqual(clone.Get(), false));
    const auto fault = Pellum::MakeRef<Morvane::Fault::MorvaneFault>();
    EXPECT_EQ(fault->GetHttpMapping().code, 500);

    // A look-up of anything at all loads the library.
    EXPECT_NE(Tavik::TypeRegistry::Instance().FindByName("string"), nullptr);

    EXPECT_EQ(
        Tavik::GetDoType<Location>(),
        Tavik::TypeRegistry::Instance().FindByName("morvane.ComputerSpec.LiveComputerLocation"));
    EXPECT_EQ(location->_GetType(), Tavik::GetDoType<Location>());
    EXPECT_NE(Tavik::GetEnumType<Morvane::DiagnosticManager::BundleFormat>(), nullptr);
    EXPECT_NE(Tavik::GetMoType<Morvane::DiagnosticManager>(), nullptr);
    ASSERT_NE(Morvane::GetRcVersion(), nullptr);
    EXPECT_EQ(Morvane::GetRcVersion()->GetName(), "morvane.version.v9_0");
    EXPECT_STREQ(Morvane::orlinNamespaceId.GetName(), "morvane");
    for (std::size_t i = 0; i < Morvane::kVersionCount; ++i) {
        ASSERT_NE(Morvane::officialVersions[i], nullptr);
        EXPECT_EQ(&Morvane::officialVersions[i]->GetVersion(), Morvane::internalVersions[i]);
    }
    EXPECT_EQ(Tavik::TypeRegistry::Instance().GetErrors(), std::vector<std::string>());
}

} // namespace
