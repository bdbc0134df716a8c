#include "pellum/object/block_cache.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tests/sample/api/level5.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/required_kinds.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <new>
#include <vector>

/// Constructors leave required numbers, booleans and enumeration values as they find them; everything that
/// makes an object fills its storage with zeros before.
namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Sample::RequiredKinds;

/// Leaves freed blocks of a size behind that are full of something else.
void SoilHeap(std::size_t size) {
    std::vector<void*> blocks(64);
    for (void*& block : blocks) {
        block = Pellum::AllocateBlock(size);
        std::memset(block, 0xAA, size);
        // Or the compiler sees that nobody reads it.
        asm volatile("" : : "r"(block) : "memory");
    }
    for (void* block : blocks) {
        Pellum::FreeBlock(block, size);
    }
}

void ExpectZero(const RequiredKinds& kinds) {
    EXPECT_EQ(kinds.GetIntValue(), 0);
    EXPECT_EQ(kinds.GetLongValue(), 0);
    EXPECT_EQ(kinds.GetByteValue(), 0);
    EXPECT_EQ(kinds.GetFloatValue(), 0.0F);
    EXPECT_EQ(static_cast<int>(kinds.GetEnumValue()), 0);
    unsigned char boolean = 0xFF;
    std::memcpy(&boolean, kinds.PeekBooleanValue(), 1);
    EXPECT_EQ(boolean, 0);
    EXPECT_EQ(kinds.GetStringValue(), "");
    EXPECT_EQ(kinds.PeekDataValue(), nullptr);
}

TEST(ZeroFill, ByNew) {
    for (int i = 0; i < 100; ++i) {
        SoilHeap(sizeof(RequiredKinds));
        ExpectZero(*MakeRef<RequiredKinds>());
        ExpectZero(*Ref<RequiredKinds>(new (std::nothrow) RequiredKinds));
    }
}

TEST(ZeroFill, ByTheCreateFunction) {
    Tavik::TypeRegistry::Instance().Load();
    const Tavik::DataObjectType& type = *Tavik::GetDoType<RequiredKinds>();
    for (int i = 0; i < 100; ++i) {
        SoilHeap(sizeof(RequiredKinds));
        const Ref<Tavik::DataObject> object(type.New());
        ExpectZero(static_cast<const RequiredKinds&>(*object));
    }
}

TEST(ZeroFill, ByCloning) {
    const auto original = MakeRef<RequiredKinds>();
    for (int i = 0; i < 100; ++i) {
        SoilHeap(sizeof(RequiredKinds));
        const Ref<RequiredKinds> clone(original->_Clone());
        ExpectZero(*clone);
    }
}

TEST(ZeroFill, InPlace) {
    alignas(RequiredKinds) unsigned char storage[sizeof(RequiredKinds)];
    std::memset(storage, 0xAA, sizeof(storage));
    asm volatile("" : : "r"(storage) : "memory");
    reinterpret_cast<RequiredKinds*>(storage)->__autoclassinit2(sizeof(storage));
    auto* object = ::new (storage) RequiredKinds;
    ExpectZero(*object);
    std::destroy_at(object);
}

/// Of classes that derive from others the members of every level.
TEST(ZeroFill, OfDerivedClasses) {
    for (int i = 0; i < 100; ++i) {
        SoilHeap(sizeof(Sample::Level5));
        const auto object = MakeRef<Sample::Level5>();
        EXPECT_FALSE(object->IsFourth());
        EXPECT_EQ(object->PeekThird(), nullptr);
        SoilHeap(sizeof(Sample::Point));
        EXPECT_EQ(MakeRef<Sample::Point>()->GetX(), 0);
    }
}

} // namespace
