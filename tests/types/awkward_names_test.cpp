#include "tests/sample/api/any.h"
#include "tests/sample/api/class.h"
#include "tests/sample/api/exception.h"
#include "tests/sample/api/get_x.h"

#include <gtest/gtest.h>

/// Types whose every name means something else to C++ or to the generated classes.
namespace {

using Pellum::MakeRef;
namespace Awkward = Sample::Namespace::Class;

TEST(AwkwardNames, AreUsedLikeOthers) {
    const auto object = MakeRef<Awkward::Class>();
    object->SetClass("c");
    object->SetNew(1);
    object->SetThis(true);
    object->SetDefault(false);
    object->SetDelete("d");
    object->SetOperator(MakeRef<Awkward::Class>().Get());
    object->GetTemplate()->Append(MakeRef<Awkward::Class>().Get());
    object->SetEnum(Awkward::Class::Xor::nullptr_);
    object->SetType(Awkward::Class::Type::xor_);
    object->SetToString("s");
    object->SetRefCount(7);
    object->SetRef(8);
    object->SetSelf(9);

    // A property may take a name that the classes have; the inherited one stays what it was.
    EXPECT_EQ(*object->PeekRefCount(), 7);
    EXPECT_EQ(object->GetRefCount_().GetValue(), 7);
    EXPECT_EQ(static_cast<const Tavik::Any&>(*object).GetRefCount(), 1);

    EXPECT_STREQ(Awkward::Class::TYPE_NEW, "new");
}

TEST(AwkwardNames, MayRepeatTheirClass) {
    const auto any = MakeRef<Awkward::Any>();
    const auto string = MakeRef<Awkward::Any::String>();
    string->SetString("s");
    string->GetData()->Append(1);
    any->SetObject(string.Get());
    any->GetString()->Append(string.Get());
    any->SetAny(any->GetObject());
    string->SetAny(MakeRef<Awkward::Any>().Get());
    EXPECT_EQ(string->GetRefCount(), 4);
    const auto accessor = MakeRef<Awkward::GetX>();
    accessor->SetX(1);
    accessor->SetGetX(2);
    accessor->SetSwapX(3);
    EXPECT_EQ(accessor->GetX_(), 1);
    EXPECT_EQ(accessor->GetGetX(), 2);
    EXPECT_EQ(accessor->GetSwapX(), 3);

    const auto fault = MakeRef<Awkward::Exception>();
    fault->SetWhat("w");
    fault->SetThrow("t");
    EXPECT_EQ(fault->GetWhat(), "w");
    EXPECT_EQ(fault->PeekThrow()->size(), 1U);
}

} // namespace
