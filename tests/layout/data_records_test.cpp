#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/value/data_array.h"
#include "tests/layout/reading.h"
#include "tests/support/dotted_names.h"

#include <map>

/// The records of data types and enumerations, read byte by byte. Numbers are those of the format.
namespace {

using namespace LayoutTests;
using Pellum::Ref;

// The functions of a record as one calls them who knows no classes.
using Get = void*(const void* object, int index, void* out);
using FieldPointer = const void*(const void* object, int index);
using Set = void(void* object, int index, const void* in);
using Swap = void(void* object, int index, void* other);
using IsSet = bool(const void* object, int index);
using Reset = void(void* object, int index);
using Create = void*();

/// Takes over what a create function has made.
template <class T>
Ref<T> Adopt(void* object) {
    return Ref<T>(static_cast<T*>(object));
}

TEST(DataRecords, StandSideBySideInTheOrderOfTheSlots) {
    const auto& types = GetLibrary().types;
    ASSERT_EQ(types.size(), kDataTypeCount + kEnumCount + kManagedTypeCount);
    const auto typeAt = [&](std::size_t slot) -> const Tavik::DataObjectType& {
        return dynamic_cast<const Tavik::DataObjectType&>(*types[slot]);
    };
    std::size_t rows = 0;
    Extents extents;
    std::map<std::uint32_t, int> kinds;
    std::map<std::string_view, int> roots;
    const Record first(kDataTypeInfo, &typeAt(0).GetDataTypeInfo());
    for (std::size_t slot = 0; slot < kDataTypeCount; ++slot) {
        const Tavik::DataObjectType& type = typeAt(slot);
        SCOPED_TRACE(type.GetName());
        const Record record = first.Next(slot);
        ASSERT_EQ(record.Address(), &type.GetDataTypeInfo());
        const std::uint32_t kind = type.IsFault() ? 0x11 : 0x10;
        ++kinds[kind];
        ExpectTypeInfo(record.Pointer(0), kind, type);
        const Record base(kTypeInfo, record.Pointer(4));
        EXPECT_EQ(base.Address(), &type.GetBaseType()->GetInfo());
        EXPECT_EQ(base.Address(), FindTypeInfo(base.Text(4)));
        EXPECT_EQ(base.Word(0), kind);
        roots[base.Text(4)] += base.Text(4).starts_with("orlin.") ? 1 : 0;

        const auto object = Adopt<Tavik::DataObject>(record.FunctionAt<Create>(36)());
        ASSERT_EQ(object->_GetDataType(), &type);
        EXPECT_EQ(Adopt<Tavik::DataArrayBase>(record.FunctionAt<Create>(40)())->_GetElementType(), &type);
        bool hasOptional = false;
        const std::size_t count =
            ForEachRow(kProperty, record.Pointer(8), extents, [&](const Record& row, std::size_t index) {
                ASSERT_LT(index, type.GetOwnProperties().size());
                ExpectRow(row, {0, 1, 2, 3, 0x200, 0x202}, type.GetOwnProperties()[index].GetDescriptor());
                // A new object has what can not be unset, and nothing else.
                const std::uint32_t valueKind = Record(kTypeInfo, row.Pointer(0)).Word(0);
                const bool isScalar = valueKind <= 0x0A || valueKind == 0x0F;
                EXPECT_EQ(
                    record.FunctionAt<IsSet>(28)(object.Get(), static_cast<int>(index)),
                    (row.Word(4) & 3) == 0 && isScalar);
                hasOptional = hasOptional || (row.Word(4) & 2) != 0;
            });
        EXPECT_EQ(count, type.GetOwnProperties().size());
        rows += count;
        for (const std::size_t offset : {12U, 16U, 20U, 24U}) {
            EXPECT_EQ(record.Pointer(offset) == nullptr, count == 0) << offset;
        }
        EXPECT_EQ(record.Pointer(32) == nullptr, !hasOptional);
        EXPECT_EQ(record.Word(44), 0U);
    }
    extents.ExpectDisjoint();
    EXPECT_EQ(rows, 989U);
    EXPECT_EQ(kinds[0x10], 416);
    EXPECT_EQ(kinds[0x11], 165);
    EXPECT_EQ(roots["orlin.DynamicData"], 146);
    EXPECT_EQ(roots["orlin.MethodFault"], 1);
    EXPECT_EQ(roots["orlin.RuntimeFault"], 2);
}

Record FindDataRecord(const char* name) {
    const Tavik::Type* type = Tavik::TypeRegistry::Instance().FindByName(name);
    return {kDataTypeInfo, &dynamic_cast<const Tavik::DataObjectType&>(*type).GetDataTypeInfo()};
}

TEST(DataRecords, OfALocation) {
    const Record record = FindDataRecord("morvane.ComputerSpec.LiveComputerLocation");
    const Record info(kTypeInfo, record.Pointer(0));
    EXPECT_EQ(info.Text(8), "MorvaneComputerSpecLiveComputerLocation");
    EXPECT_EQ(info.Text(12), "morvane.version.version1");
    EXPECT_EQ(record.Pointer(4), FindTypeInfo("morvane.ComputerSpec.ComputerLocation"));
    const std::string_view v1 = "morvane.version.version1";
    const std::string_view v2 = "morvane.version.version2";
    ExpectRows(
        record.Pointer(8), {{"string", 0, "hostname", v1},
                            {"int", 2, "port", v1},
                            {"string", 2, "username", v1},
                            {"string", 0x202, "password", v1},
                            {"string", 0x202, "clientPrivateKey", "morvane.version.version7"},
                            {"string", 0, "osType", v1},
                            {"boolean", 2, "verifyPeer", v2},
                            {"string", 2, "sslThumbprint", v2},
                            {"string", 2, "sslCertificate", "morvane.version.v9_0"}});

    // A foreign runtime fills an object and reads it.
    void* const object = record.FunctionAt<Create>(36)();
    const auto owner = Adopt<Tavik::DataObject>(object);
    const std::int32_t port = 902;
    std::int32_t out = 0;
    EXPECT_FALSE(record.FunctionAt<IsSet>(28)(object, 1));
    EXPECT_EQ(record.FunctionAt<FieldPointer>(16)(object, 1), nullptr);
    record.FunctionAt<Set>(20)(object, 1, &port);
    EXPECT_TRUE(record.FunctionAt<IsSet>(28)(object, 1));
    EXPECT_EQ(record.FunctionAt<Get>(12)(object, 1, &out), &out);
    EXPECT_EQ(out, 902);
    EXPECT_EQ(Raw(record.FunctionAt<FieldPointer>(16)(object, 1)).Word(0), 902U);
    unsigned char other[8] = {7, 0, 0, 0, 1}; // a value and its mark
    record.FunctionAt<Swap>(24)(object, 1, other);
    EXPECT_EQ(Raw(other).Word(0), 902U);
    EXPECT_EQ(Raw(record.FunctionAt<FieldPointer>(16)(object, 1)).Word(0), 7U);
    record.FunctionAt<Reset>(32)(object, 1);
    EXPECT_FALSE(record.FunctionAt<IsSet>(28)(object, 1));
}

TEST(EnumRecords, PointToTheExportedTags) {
    std::size_t tags = 0;
    Extents extents;
    for (std::size_t slot = kDataTypeCount; slot < kDataTypeCount + kEnumCount; ++slot) {
        const auto& type = dynamic_cast<const Tavik::EnumType&>(*GetLibrary().types[slot]);
        SCOPED_TRACE(type.GetName());
        const Record record(kEnumTypeInfo, &type.GetEnumTypeInfo());
        ExpectTypeInfo(record.Pointer(0), 0x0F, type);
        // The class knows its type by the slot.
        EXPECT_EQ(Pellum::Ref<Tavik::Any>(type.GetFunctions().box(0))->_GetType(), &type);
        const std::string name = TestSupport::ToPath(type.GetName(), "::");
        const std::size_t last = name.rfind("::") + 2;
        const std::string prefix = name.substr(last) + '_';
        std::vector<const char*> values;
        for (const void* value : ReadPointers(record.Pointer(4), extents)) {
            values.push_back(static_cast<const char*>(value));
            const std::string constant = TestSupport::ToUpperCase(prefix + values.back());
            EXPECT_EQ(value, FindSymbol(name.substr(0, last) + constant)) << constant;
        }
        EXPECT_EQ(values, type.GetTags());
        tags += values.size();
    }
    extents.ExpectDisjoint();
    EXPECT_EQ(tags, 208U);
    const Tavik::Type* state = Tavik::TypeRegistry::Instance().FindByName("morvane.task.TaskInfo.State");
    const Record record(kEnumTypeInfo, &dynamic_cast<const Tavik::EnumType&>(*state).GetEnumTypeInfo());
    const Raw values(record.Pointer(4));
    for (std::size_t i = 0; const std::string_view tag : {"queued", "running", "success", "error"}) {
        EXPECT_EQ(static_cast<const char*>(values.Pointer(i++ * sizeof(void*))), tag);
    }
}

} // namespace
