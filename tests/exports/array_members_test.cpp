#include "tavik/type/type_registry.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/diagnostic_manager.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <typeinfo>
#include <vector>

/// Compiled without optimisation: every member of a template that a library holds has to be there for its
/// users.
namespace {

using Content = Morvane::DiagnosticManager::BundleContent;
using Morvane::ComputerSpec;

class ArrayMembers : public testing::Test {
protected:
    static void SetUpTestSuite() { Tavik::TypeRegistry::Instance().Load(); }
};

TEST_F(ArrayMembers, OfDataObjectsAreThereForUsers) {
    const Pellum::Ref array(new Tavik::DataArray<ComputerSpec>);
    array->Append(nullptr);
    array->Append(new ComputerSpec);
    array->SetElement(0, new ComputerSpec);
    int count = 0;
    for (const ComputerSpec* spec : *array) {
        count += spec != nullptr ? 1 : 0;
    }
    EXPECT_EQ(count, 2);
    const Pellum::Ref copy(array->_Clone());
    EXPECT_TRUE(array->_IsEqual(copy.Get(), false));
    EXPECT_NE((*copy)[1], (*array)[1]);
    EXPECT_EQ(array->_GetType(), Tavik::Type::GetArrayType(array->_GetElementType()));
    EXPECT_EQ(array->_GetElementType(), Tavik::GetDoType<ComputerSpec>());
}

/// `a` and `b` are different values.
template <class T>
void CheckScalars(const T& a, const T& b) {
    const Pellum::Ref array(new Tavik::Array<T>({a}));
    array->Append(b);
    array->_Append(&a);
    EXPECT_EQ(array->GetElements(), Tavik::Array<T>(std::vector<T>{a, b, a}).GetElements());
    EXPECT_EQ(array->GetLength(), 3U);
    EXPECT_EQ(array->_GetElementPointer(1), &(*array)[1]);
    const Pellum::Ref copy(array->_Clone());
    EXPECT_TRUE(array->_IsEqual(copy.Get(), false));
    (*copy)[2] = b;
    Tavik::PropertyDiffSet diffs;
    array->_DiffProperties(copy.Get(), "at", diffs);
    EXPECT_TRUE(diffs.Contains("at[2]"));
    EXPECT_EQ(diffs.GetSize(), 1U);
    EXPECT_EQ(array->_GetType(), Tavik::Type::GetArrayType(array->_GetElementType()));

    const Pellum::Ref boxed(new Tavik::Primitive<T>(a));
    const Pellum::Ref other(boxed->_Clone());
    EXPECT_EQ(other->GetValue(), a);
    EXPECT_TRUE(boxed->_IsEqual(other.Get(), false));
    EXPECT_EQ(boxed->_GetType(), array->_GetElementType());
    EXPECT_EQ(*static_cast<const T*>(boxed->_GetValuePointer()), a);
    boxed->_DiffProperties(Pellum::Ref(new Tavik::Primitive<T>(b)).Get(), "box", diffs);
    EXPECT_TRUE(diffs.Contains("box"));
}

TEST_F(ArrayMembers, OfScalarsAreThereForUsers) {
    CheckScalars<std::int32_t>(1, 2);
    CheckScalars<std::string>("a", "b");
    CheckScalars(Content::agentLogs, Content::clientLogs);
}

#if defined(_WIN32)
/// What a program makes is of the library's class, not of one of its own that is called the same.
TEST_F(ArrayMembers, AreOfTheLibrarysClass) {
    const Pellum::Ref<Tavik::ArrayBase> arrays[] = {
        Pellum::Ref<Tavik::ArrayBase>(new Tavik::DataArray<ComputerSpec>),
        Pellum::Ref<Tavik::ArrayBase>(Tavik::GetDoType<ComputerSpec>()->NewArray()),
        Pellum::Ref<Tavik::ArrayBase>(new Tavik::Array<Content>),
        Pellum::Ref<Tavik::ArrayBase>(Tavik::GetEnumType<Content>()->NewArray()),
    };
    EXPECT_EQ(&typeid(*arrays[0]), &typeid(*arrays[1]));
    EXPECT_EQ(&typeid(*arrays[2]), &typeid(*arrays[3]));
}
#endif

} // namespace
