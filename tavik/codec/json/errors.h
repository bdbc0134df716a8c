#pragma once

#include "pellum/error/exception.h"
#include "tavik_json/export.h"

#include <cstddef>
#include <string>

namespace Tavik::Json {

/// A value that JSON, or the peer's version, has no form for.
class TAVIK_JSON_API EncodeError : public Pellum::ExceptionImpl<EncodeError> {
public:
    /// `path` names the place in the value, empty for the value itself; `reason` reads on from it: "is not
    /// UTF-8 text".
    EncodeError(std::string path, std::string reason);
    EncodeError(const EncodeError& other);
    EncodeError& operator=(const EncodeError& other);
    ~EncodeError() override;

    /// "source.location.port"; empty for the value itself.
    const std::string& GetPath() const noexcept { return m_path; }

    const std::string& GetReason() const noexcept { return m_reason; }

private:
    std::string m_path;
    std::string m_reason;
};

/// A place in a text. Both count from 1; a column is one code point wide.
struct TextPlace {
    std::size_t line = 1;
    std::size_t column = 1;
};

/// A text that is not the JSON form of an expected value. Nothing that it tells contains a secret's content.
class TAVIK_JSON_API DecodeError : public Pellum::ExceptionImpl<DecodeError> {
public:
    /// `sourceName` stands in front of the message when it is not empty.
    DecodeError(const std::string& sourceName, TextPlace place, std::string path, std::string reason);
    DecodeError(const DecodeError& other);
    DecodeError& operator=(const DecodeError& other);
    ~DecodeError() override;

    /// Where the text in question begins.
    std::size_t GetLine() const noexcept { return m_place.line; }

    std::size_t GetColumn() const noexcept { return m_place.column; }

    /// The property in question, "disk[2].size"; empty for the value itself.
    const std::string& GetPath() const noexcept { return m_path; }

    /// What is wrong and what was expected.
    const std::string& GetReason() const noexcept { return m_reason; }

private:
    TextPlace m_place;
    std::string m_path;
    std::string m_reason;
};

} // namespace Tavik::Json
