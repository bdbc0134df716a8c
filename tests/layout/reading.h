#pragma once

#include "tavik/type/type.h"
#include "tavik/type/type_registry.h"
#include "tests/layout/raw_memory.h"

#include <gmock/gmock.h>

#include <functional>
#include <initializer_list>
#include <map>

/// What the tests of several kinds of records have in common.
namespace LayoutTests {

inline constexpr std::size_t kDataTypeCount = 581;
inline constexpr std::size_t kEnumCount = 38;
inline constexpr std::size_t kManagedTypeCount = 30;

/// The library whose version record says that its namespace is "morvane".
inline const Tavik::LoadedLibrary& GetLibrary() {
    static const std::vector<Tavik::LoadedLibrary> libraries = Tavik::TypeRegistry::Instance().GetLibraries();
    for (const Tavik::LoadedLibrary& library : libraries) {
        if (Record(kVersions, library.versions).Text(0) == "morvane") {
            return library;
        }
    }
    throw std::logic_error("the library is not loaded");
}

/// The exported record of a type of the library, which has to be that of the registered type.
inline void ExpectTypeInfo(const void* address, std::uint32_t kind, const Tavik::Type& type) {
    const Record info(kTypeInfo, address);
    EXPECT_EQ(address, &type.GetInfo());
    EXPECT_EQ(info.Word(0), kind);
    EXPECT_TRUE(info.Text(4).starts_with("morvane."));
    EXPECT_EQ(info.Text(8).find('.'), std::string_view::npos);
    EXPECT_NE(Tavik::TypeRegistry::Instance().FindVersion(info.Text(12)), nullptr) << info.Text(12);
    EXPECT_EQ(address, FindTypeInfo(info.Text(4)));
}

/// A row of a list of properties, parameters or results, which has to be the one that the runtime reads.
inline void ExpectRow(
    const Record& row, std::initializer_list<std::uint32_t> flags,
    const Tavik::PropertyDescriptor& described) {
    EXPECT_EQ(row.Address(), &described);
    EXPECT_THAT(flags, testing::Contains(row.Word(4)));
    EXPECT_EQ(row.Word(12), 0U);
    EXPECT_NE(Tavik::TypeRegistry::Instance().FindVersion(row.Text(16)), nullptr) << row.Text(16);
    if (row.Pointer(0) != nullptr) {
        const Record type(kTypeInfo, row.Pointer(0));
        EXPECT_EQ(FindTypeInfo(type.Text(4)), type.Address()) << type.Text(4);
    }
}

/// The memory that lists take, with their ends. Where an end is missing, what follows a list may look like
/// one by chance; but then it is part of something else.
class Extents {
public:
    void Add(const void* begin, std::size_t size) { m_sizes[begin] = size; }

    void ExpectDisjoint() const {
        const char* end = nullptr;
        for (const auto& [begin, size] : m_sizes) {
            EXPECT_GE(begin, end) << "a list reaches into the next one";
            end = static_cast<const char*>(begin) + size;
        }
    }

private:
    std::map<const void*, std::size_t> m_sizes;
};

/// Calls `read` with each row of a list, which ends with one whose name is null, and counts them.
inline std::size_t ForEachRow(
    const Form& form, const void* list, Extents& extents,
    const std::function<void(const Record& row, std::size_t index)>& read) {
    const std::size_t nameOffset = &form == &kMethod ? 0 : 8;
    Record row(form, list);
    std::size_t count = 0;
    for (; row.Pointer(nameOffset) != nullptr && count < 100; row = row.Next()) {
        SCOPED_TRACE(row.Text(nameOffset));
        read(row, count++);
    }
    EXPECT_LT(count, 100U) << "no end";
    extents.Add(list, (count + 1) * form.Size());
    return count;
}

/// The pointers of a list that ends with a null one.
inline std::vector<const void*> ReadPointers(const void* list, Extents& extents) {
    std::vector<const void*> pointers;
    while (pointers.size() < 100 && Raw(list).Pointer(pointers.size() * sizeof(void*)) != nullptr) {
        pointers.push_back(Raw(list).Pointer(pointers.size() * sizeof(void*)));
    }
    EXPECT_LT(pointers.size(), 100U) << "no end";
    extents.Add(list, (pointers.size() + 1) * sizeof(void*));
    return pointers;
}

/// One row, spelt out.
struct ExpectedRow {
    std::string_view type;
    std::uint32_t flags;
    std::string_view name;
    std::string_view version;
};

inline void ExpectRows(const void* list, const std::vector<ExpectedRow>& expected) {
    Extents extents;
    const std::size_t count = ForEachRow(kProperty, list, extents, [&](const Record& row, std::size_t index) {
        ASSERT_LT(index, expected.size());
        EXPECT_EQ(row.Pointer(0), FindTypeInfo(expected[index].type));
        EXPECT_EQ(row.Word(4), expected[index].flags);
        EXPECT_EQ(row.Text(8), expected[index].name);
        EXPECT_EQ(row.Text(16), expected[index].version);
    });
    EXPECT_EQ(count, expected.size());
}

} // namespace LayoutTests
