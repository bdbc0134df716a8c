#pragma once

#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"

#include <gtest/gtest.h>

/// Look-ups in the library of types that the codecs' tests are written with, shop.tavik.
namespace Shop {

/// The type of that wire name, borrowed.
inline const Tavik::Type* Find(const char* wireName) {
    const Tavik::Type* const type = Tavik::TypeRegistry::Instance().FindByWireName(wireName);
    EXPECT_NE(type, nullptr) << wireName;
    return type;
}

/// The first version, borrowed.
inline const Tavik::Version* GetVersion1() {
    const Tavik::Version* const version =
        Tavik::TypeRegistry::Instance().FindVersion("shop.version.version1");
    EXPECT_NE(version, nullptr);
    return version;
}

} // namespace Shop
