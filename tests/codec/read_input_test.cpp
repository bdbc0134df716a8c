#include "pellum/error/exception.h"
#include "pellum/text/path_name.h"
#include "tavik/codec/json/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using Tavik::Json::ReadInput;

std::string MessageFor(const std::string& path, std::size_t limit) {
    try {
        ReadInput(path, limit);
        return "no error";
    } catch (const Pellum::Exception& error) {
        return error.what();
    }
}

TEST(ReadInputTest, ReadsUpToTheLimitAndTellsWhatIsInTheWay) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "codec_read_input";
    std::filesystem::create_directories(folder);
    // Names are UTF-8 on every system.
    const std::filesystem::path path = folder / u8"gr\u00F6\u00DFe-\u65E5\u672C.json";
    const std::string file = Pellum::ToName(path);
    const std::string content = std::string(200'000, 'x') + "\r\n\x1A" + '\0' + "end";
    std::ofstream(path, std::ios::binary) << content;

    EXPECT_EQ(ReadInput(file, content.size()), content);
    EXPECT_THAT(MessageFor(file, content.size() - 1), testing::HasSubstr("longer than the limit of "));
    EXPECT_THAT(MessageFor(file, 10), testing::HasSubstr(file));
    std::ofstream(path, std::ios::binary) << "\xEF\xBB\xBF{}\xEF\xBB\xBF";
    EXPECT_EQ(ReadInput(file, 10), "{}\xEF\xBB\xBF"); // the mark in front only
    EXPECT_THAT(MessageFor(folder.string(), 10), testing::HasSubstr("it is a directory"));
    EXPECT_THAT(MessageFor((folder / "none").string(), 10), testing::HasSubstr("No such file"));
    std::filesystem::remove_all(folder);
}

} // namespace
