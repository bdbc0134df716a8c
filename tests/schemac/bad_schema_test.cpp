// Compiles every schema below bad/ and compares all that is reported with the annotations in the files:
// nothing may be missing, nothing extra. An annotation is a comment
//
//     //! error E0203: the whole message          beside the place, or on a line of its own above it
//     //!        ^ note: the whole message        above it, with '^' in the column of the place
//
// A folder below bad/ is one case: its files are compiled together.

#include "tests/schemac/test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <regex>
#include <set>
#include <sstream>

namespace Schemac::Test {
namespace {

namespace fs = std::filesystem;

/// One expected or reported message; column 0 stands for any.
struct Entry {
    std::string file;
    std::size_t line = 0;
    std::size_t column = 0;
    std::string text;

    bool Matches(const Entry& other) const {
        return file == other.file && line == other.line && text == other.text
            && (column == 0 || other.column == 0 || column == other.column);
    }
};

void PrintTo(const Entry& entry, std::ostream* out) {
    *out << entry.file << ':' << entry.line << ':' << entry.column << ": " << entry.text;
}

std::vector<Entry> ReadAnnotations(const fs::path& path) {
    static const std::regex kAnnotation(R"(^(.*?)//!\s*(\^?)\s*(.*?)\s*$)");
    std::vector<Entry> annotations;
    std::vector<Entry> pending;
    std::istringstream stream(ReadFile(path));
    std::size_t number = 0;
    const auto settle = [&] {
        for (Entry& entry : pending) {
            entry.line = number;
            annotations.push_back(std::move(entry));
        }
        pending.clear();
    };
    for (std::string line; std::getline(stream, line);) {
        ++number;
        std::smatch match;
        const bool isAnnotation = std::regex_match(line, match, kAnnotation);
        const bool standsAlone = isAnnotation && match[1].str().find_first_not_of(" \t") == std::string::npos;
        if (isAnnotation) {
            const auto column = match[2].length() != 0 ? static_cast<std::size_t>(match.position(2)) + 1 : 0;
            pending.push_back({path.filename().string(), 0, column, match[3]});
        }
        if (!standsAlone) {
            settle();
        }
    }
    ++number; // the empty line behind the last line break
    settle();
    return annotations;
}

std::vector<Entry> ReadReports(const Compiled& compiled) {
    std::vector<Entry> reports;
    const auto add = [&](const Span& span, const std::string& text) {
        const Position position = compiled.sources.Locate(span);
        const std::string file = fs::path(compiled.sources.Path(span.file)).filename().string();
        reports.push_back({file, position.line, position.column, text});
    };
    for (const Diagnostic* diagnostic : compiled.reporter.Sorted()) {
        add(diagnostic->span, "error " + ErrorCode(diagnostic->number) + ": " + diagnostic->text);
        for (const Diagnostic::Note& note : diagnostic->notes) {
            add(note.span, "note: " + note.text);
        }
    }
    return reports;
}

std::vector<fs::path> SortedEntries(const fs::path& folder) {
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        entries.push_back(entry.path());
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::vector<fs::path> FilesOf(const fs::path& bad) {
    return fs::is_directory(bad) ? SortedEntries(bad) : std::vector<fs::path>{bad};
}

class BadSchema : public testing::TestWithParam<fs::path> {};

TEST_P(BadSchema, ReportsWhatIsAnnotated) {
    std::vector<Entry> missing;
    for (const fs::path& file : FilesOf(GetParam())) {
        const std::vector<Entry> annotations = ReadAnnotations(file);
        missing.insert(missing.end(), annotations.begin(), annotations.end());
    }
    ASSERT_FALSE(missing.empty());
    // The longer the wait for the exact place, the better: entries with a column are matched first.
    std::stable_partition(
        missing.begin(), missing.end(), [](const Entry& entry) { return entry.column != 0; });

    const auto compiled = CompileFiles(DataFolder() / "bad", FilesOf(GetParam()));
    EXPECT_EQ(compiled->module, nullptr);
    std::vector<Entry> extra;
    for (const Entry& report : ReadReports(*compiled)) {
        const auto found = std::find_if(
            missing.begin(), missing.end(), [&](const Entry& entry) { return entry.Matches(report); });
        if (found == missing.end()) {
            extra.push_back(report);
        } else {
            missing.erase(found);
        }
    }
    EXPECT_EQ(testing::PrintToString(missing), "{}") << "annotated, but not reported";
    EXPECT_EQ(testing::PrintToString(extra), "{}") << "reported, but not annotated";
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadSchema, testing::ValuesIn(SortedEntries(DataFolder() / "bad")),
    [](const auto& test) { return test.param.stem().string(); });

TEST(Catalogue, NumbersAreUniqueAndEveryErrorHasACase) {
    const std::string catalogue = ReadFile(DataFolder() / "../../schemac/diagnostic/catalogue.h");
    static const std::regex kNumber(R"(\bk\w+\{\s*(\d+),)");
    std::set<std::string> numbers;
    for (std::sregex_iterator it(catalogue.begin(), catalogue.end(), kNumber); it != std::sregex_iterator();
         ++it) {
        const int number = std::stoi((*it)[1]);
        if (number != 0) {
            EXPECT_TRUE(numbers.insert(ErrorCode(static_cast<std::uint16_t>(number))).second)
                << "number " << number << " is given twice";
        }
    }
    EXPECT_GT(numbers.size(), 50U);

    std::string cases = ReadFile(DataFolder() / "hostile_input_test.cpp"); // files that no editor could hold
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(DataFolder() / "bad")) {
        cases += entry.is_regular_file() ? ReadFile(entry.path()) : "";
    }
    for (const std::string& number : numbers) {
        EXPECT_NE(cases.find(number + ":"), std::string::npos) << "no test expects " << number;
    }
}

} // namespace
} // namespace Schemac::Test
