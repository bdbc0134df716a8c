#include "tavik/codec/json/file.h"

#include "pellum/error/exception.h"
#include "pellum/text/path_name.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace Tavik::Json {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

[[noreturn]] void Fail(const std::string& name, const std::string& why) {
    throw Pellum::Exception("cannot read " + name + ": " + why);
}

[[noreturn]] void FailWith(const std::string& name, int error) {
    Fail(name, std::generic_category().message(error));
}

std::string ReadAll(std::FILE* file, const std::string& name, std::size_t limit) {
    std::string content;
    std::array<char, std::size_t{64} * 1024> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file)) {
        if (count > limit - content.size()) {
            Fail(name, "it is longer than the limit of " + std::to_string(limit) + " bytes");
        }
        content.append(buffer.data(), count);
    }
    if (std::ferror(file) != 0) {
        FailWith(name, errno);
    }
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (content.starts_with(kByteOrderMark)) {
        content.erase(0, kByteOrderMark.size());
    }
    return content;
}

std::FILE* Open(const std::filesystem::path& path) {
#ifdef _WIN32
    return _wfopen(path.c_str(), L"rb"); // the other one knows the names of one code page
#else
    return std::fopen(path.c_str(), "rb");
#endif
}

} // namespace

std::string ReadInput(const std::string& path, std::size_t limit) {
    if (path == "-") {
#ifdef _WIN32
        _setmode(_fileno(stdin), _O_BINARY);
#endif
        return ReadAll(stdin, "standard input", limit);
    }
    const std::filesystem::path name = Pellum::ToPath(path);
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored)) {
        Fail(path, "it is a directory");
    }
    const std::unique_ptr<std::FILE, CloseFile> file(Open(name));
    if (file == nullptr) {
        FailWith(path, errno);
    }
    return ReadAll(file.get(), path, limit);
}

} // namespace Tavik::Json
