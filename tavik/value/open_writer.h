#pragma once

#include "tavik/export.h"
#include "tavik/value/open_content.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

/// Appends properties to open content, token by token: a name, then a value, which may be an object or array
/// that is begun and ended. What is not complete when the writer goes is dropped again. The content is
/// borrowed and not to be changed by others meanwhile. Not synchronised.
///
/// A call that does not fit where the writer stands throws `Pellum::Exception` and adds nothing.
class TAVIK_API OpenContentWriter {
public:
    explicit OpenContentWriter(OpenContent& content);
    ~OpenContentWriter();
    OpenContentWriter(const OpenContentWriter&) = delete;
    OpenContentWriter& operator=(const OpenContentWriter&) = delete;

    /// Names the member whose value comes next. False, with nothing added, when its object has one of that
    /// name already.
    [[nodiscard]] bool Name(std::string_view name);
    void BeginObject();
    void EndObject();
    void BeginArray();
    void EndArray();
    void String(std::string_view text);
    /// `literal` is a number as JSON has it; it is kept as it is.
    void Number(std::string_view literal);
    void Boolean(bool value);
    void Null();

    /// Whether the last property has its whole value.
    bool IsComplete() const { return m_levels.size() == 1 && !m_levels.back().hasName; }

    /// Path of the value that is expected next, "config.disk[2]"; of the object around it where that is a
    /// name.
    std::string GetPath() const;

private:
    /// Orders names by their text, which a reallocation moves.
    struct NameLess {
        using is_transparent = void;

        const OpenContent* content;

        bool operator()(std::uint32_t a, std::uint32_t b) const;
        bool operator()(std::uint32_t a, std::string_view b) const;
        bool operator()(std::string_view a, std::uint32_t b) const;
    };

    /// The properties themselves, or an object or array that has been begun.
    struct Level {
        bool isArray;
        bool hasName = false;   ///< the value of the last member comes next
        std::size_t begin;      ///< token of the begin; none at the lowest level
        std::uint32_t name = 0; ///< token of the last member's name
        std::uint32_t count = 0;
        std::set<std::uint32_t, NameLess> names; ///< tokens of the members' names
    };

    /// Throws unless a value may come next.
    void ExpectValue() const;
    void Begin(bool isArray);
    void End(bool isArray);
    void EndValue();
    void Scalar(OpenContent::TokenKind kind, std::string_view text = {});

    OpenContent& m_content;
    std::vector<Level> m_levels;
    std::size_t m_complete;     ///< number of tokens up to the end of the last complete property
    std::size_t m_completeText; ///< length of their text
};

} // namespace Tavik
