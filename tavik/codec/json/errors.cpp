#include "tavik/codec/json/errors.h"

#include <utility>

namespace Tavik::Json {

namespace {

std::string DescribeDecodeError(
    const std::string& sourceName, TextPlace place, const std::string& path, const std::string& reason) {
    const std::string line = std::to_string(place.line);
    const std::string column = std::to_string(place.column);
    std::string text =
        sourceName.empty() ? "line " + line + ", column " + column : sourceName + ':' + line + ':' + column;
    if (!path.empty()) {
        text += ": " + path;
    }
    return text + ": " + reason;
}

} // namespace

EncodeError::EncodeError(std::string path, std::string reason)
    : ExceptionImpl((path.empty() ? "the value" : path) + ' ' + reason),
      m_path(std::move(path)),
      m_reason(std::move(reason)) {}

EncodeError::EncodeError(const EncodeError& other) = default;
EncodeError& EncodeError::operator=(const EncodeError& other) = default;
EncodeError::~EncodeError() = default;

DecodeError::DecodeError(const std::string& sourceName, TextPlace place, std::string path, std::string reason)
    : ExceptionImpl(DescribeDecodeError(sourceName, place, path, reason)),
      m_place(place),
      m_path(std::move(path)),
      m_reason(std::move(reason)) {}

DecodeError::DecodeError(const DecodeError& other) = default;
DecodeError& DecodeError::operator=(const DecodeError& other) = default;
DecodeError::~DecodeError() = default;

} // namespace Tavik::Json
