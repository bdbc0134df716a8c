#include "tavik/type/hash_positions.h"
#include "tavik/type/name_marks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Tavik::HashPositions;
using Tavik::NameMarks;

namespace {

TEST(HashPositions, AreFoundWhileTheirNumberGrowsAlsoWhenHashesAreTheSame) {
    HashPositions positions;
    EXPECT_EQ(positions.Find(0, [](std::uint32_t) { return true; }), HashPositions::kNone);
    constexpr std::uint32_t kCount = 1000;
    const auto hash = [](std::uint32_t position) { return position % 3 == 0 ? 0xffffffff : position; };
    for (std::uint32_t added = 0; added < kCount; ++added) {
        positions.Add(hash(added), added);
        for (const std::uint32_t known : {0u, added / 2, added, added + 1}) {
            EXPECT_EQ(
                positions.Find(hash(known), [&](std::uint32_t position) { return position == known; }),
                known <= added ? known : HashPositions::kNone);
        }
    }
}

TEST(NameMarks, LeadToTheFirstOfANameAmongMoreNamesThanThereAreMarks) {
    std::vector<std::string> names{"", "a", "ab", "ba", "a", std::string("\0", 1), "", "\xff\xfe"};
    for (int i = 0; i < 1000; ++i) {
        names.push_back("name" + std::to_string(i));
    }
    std::string marks;
    const auto find = [&](const std::string& name) {
        return NameMarks::Find(marks, name, [&](std::size_t position) { return names[position] == name; });
    };
    EXPECT_EQ(find(""), NameMarks::kNone);
    for (const std::string& name : names) {
        marks.push_back(NameMarks::Get(name));
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(find(names[i]), i == 4 ? 1 : i == 6 ? 0 : i) << names[i];
    }
    EXPECT_EQ(find("name1000"), NameMarks::kNone);
}

} // namespace
