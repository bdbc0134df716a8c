#include "pellum/error/exception.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"

#include <gmock/gmock.h>

namespace {

const Tavik::Version& Find(const std::string& name) {
    const Tavik::Version* version = Tavik::TypeRegistry::Instance().FindVersion(name);
    if (version == nullptr) {
        throw std::logic_error("no version " + name);
    }
    return *version;
}

TEST(Versions, AreFoundByWhatPeopleCallThem) {
    const auto get = [](std::string_view name) -> const Tavik::Version& {
        return Tavik::TypeRegistry::Instance().GetVersion(name, "morvane");
    };
    for (const char* name : {"morvane.version.v9_0", "v9_0", "9.0"}) {
        EXPECT_EQ(&get(name), &Find("morvane.version.v9_0")) << name;
    }
    EXPECT_EQ(get("zabro.version.version3").GetNamespace(), "zabro");
    for (const char* name : {"9.1", "", "morvane", "version33"}) {
        EXPECT_THROW(static_cast<void>(get(name)), Pellum::Exception) << name;
    }
    EXPECT_THROW(
        static_cast<void>(Tavik::TypeRegistry::Instance().GetVersion("9.0", "zabro")), Pellum::Exception);
    try {
        static_cast<void>(get("v9_1"));
    } catch (const Pellum::Exception& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("did you mean \"v9_0\"?"));
    }
}

} // namespace
