#include "schemac/source/source_manager.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace Schemac {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsContinuationByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

std::uint32_t SourceManager::Load(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw std::runtime_error("it is a folder");
    }
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error(std::strerror(errno));
    }
    std::string text;
    char block[65536];
    while (stream.read(block, sizeof block) || stream.gcount() > 0) {
        text.append(block, static_cast<std::size_t>(stream.gcount()));
        if (text.size() > kMaxFileSize) {
            throw std::runtime_error("it is longer than 16 MiB");
        }
    }
    if (stream.bad()) {
        throw std::runtime_error("reading it failed");
    }
    return AddText(path, std::move(text));
}

std::uint32_t SourceManager::AddText(std::string path, std::string text) {
    if (text.starts_with(kByteOrderMark)) {
        text.erase(0, kByteOrderMark.size());
    }
    auto file = std::make_unique<File>();
    file->path = std::move(path);
    file->text = std::move(text);
    file->lineStarts.push_back(0);
    for (std::size_t at = file->text.find('\n'); at != std::string::npos;
         at = file->text.find('\n', at + 1)) {
        file->lineStarts.push_back(at + 1);
    }
    m_files.push_back(std::move(file));
    return static_cast<std::uint32_t>(m_files.size());
}

Position SourceManager::Locate(const Span& span) const {
    const File& file = Get(span.file);
    const auto after =
        std::upper_bound(file.lineStarts.begin(), file.lineStarts.end(), std::size_t{span.offset});
    const std::size_t start = *(after - 1);
    const std::string_view before = std::string_view(file.text).substr(start, span.offset - start);
    const auto characters =
        std::count_if(before.begin(), before.end(), [](char c) { return !IsContinuationByte(c); });
    return {
        static_cast<std::size_t>(after - file.lineStarts.begin()), static_cast<std::size_t>(characters) + 1};
}

std::string_view SourceManager::Line(std::uint32_t file, std::size_t line) const {
    const File& source = Get(file);
    const std::size_t start = source.lineStarts.at(line - 1);
    std::string_view text = std::string_view(source.text).substr(start);
    text = text.substr(0, text.find('\n'));
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace Schemac
