#pragma once

#include "tavik/export.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The content of objects of open types: properties that no description tells of, carried as they came.
namespace Tavik {

class OpenContent;
class OpenItems;
class PropertyDiffSet;

/// What a value inside of open content is.
enum class OpenKind : std::uint8_t { Null, Boolean, Number, String, Array, Object };

/// One value inside of open content, borrowed: good until the content is changed or gone.
class TAVIK_API OpenValue {
public:
    OpenKind GetKind() const;

    bool IsNull() const { return GetKind() == OpenKind::Null; }

    bool IsContainer() const { return GetKind() >= OpenKind::Array; }

    /// The text of a string, a number as it is written with every digit, "true", "false" or "null"; empty for
    /// objects and arrays.
    std::string_view GetText() const;
    /// The members of an object or the elements of an array; none for other values.
    OpenItems GetItems() const;
    /// Number of members or elements.
    std::size_t GetCount() const;
    /// Whether an array has neither objects nor arrays in it.
    bool HoldsOnlyScalars() const;
    /// The member of an object; nothing when there is none, or when this is no object. Linear.
    std::optional<OpenValue> Find(std::string_view name) const;

private:
    friend class OpenContent;
    friend class OpenContentWriter;
    friend class OpenItems;

    OpenValue(const OpenContent* content, std::size_t token) : m_content(content), m_token(token) {}

    /// Position behind the value.
    std::size_t GetEnd() const;

    const OpenContent* m_content;
    std::size_t m_token;
};

/// A member of an object, or an element of an array, which has no name.
struct OpenItem {
    std::string_view name; ///< borrowed like the value
    OpenValue value;
};

/// The items of an object or array in their order, for range-based loops; borrowed like `OpenValue`.
class TAVIK_API OpenItems {
public:
    class TAVIK_API Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = OpenItem;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = OpenItem;

        OpenItem operator*() const;
        Iterator& operator++();
        Iterator operator++(int);

        friend bool operator==(const Iterator& a, const Iterator& b) { return a.m_token == b.m_token; }

    private:
        friend class OpenItems;

        Iterator(const OpenContent* content, std::size_t token) : m_content(content), m_token(token) {}

        std::size_t GetValueToken() const;

        const OpenContent* m_content;
        std::size_t m_token;
    };

    Iterator begin() const { return {m_content, m_begin}; }

    Iterator end() const { return {m_content, m_end}; }

private:
    friend class OpenContent;
    friend class OpenValue;

    OpenItems(const OpenContent* content, std::size_t begin, std::size_t end)
        : m_content(content), m_begin(begin), m_end(end) {}

    const OpenContent* m_content;
    std::size_t m_begin;
    std::size_t m_end;
};

/// Named values in the order in which they came: text, numbers with every digit, true, false, null, arrays
/// and objects in any depth. An object has each name once. No value is interpreted.
///
/// Held flat, as a sequence of tokens: copying and destroying do not depend on the depth. Not synchronised.
/// Written by `OpenContentWriter`. At most 4 GiB of text.
class TAVIK_API OpenContent {
public:
    bool IsEmpty() const { return m_tokens.empty(); }

    OpenItems GetItems() const { return {this, 0, m_tokens.size()}; }

    OpenItems::Iterator begin() const { return GetItems().begin(); }

    OpenItems::Iterator end() const { return GetItems().end(); }

    /// Nothing when there is no property of that name. Linear.
    std::optional<OpenValue> Find(std::string_view name) const;

    /// Gives a property a new value; it keeps its place, or becomes the last when it is new. Linear.
    void SetText(std::string_view name, std::string_view text);
    /// `literal` is a number as JSON has it, "-12.50e3"; throws `Pellum::Exception` for anything else.
    void SetNumber(std::string_view name, std::string_view literal);
    void SetNumber(std::string_view name, std::int64_t number);
    void SetBoolean(std::string_view name, bool value);
    void SetNull(std::string_view name);
    /// Whether there was one. Linear.
    bool Remove(std::string_view name);
    void Clear();

    /// Whether both hold the same: the order of properties counts in neither, the order of elements does.
    /// Numbers are equal when they are written alike. With `partial` a property that `other` has not matches
    /// whatever this one holds, at any depth. The stack used does not grow with the depth.
    bool IsEqual(const OpenContent& other, bool partial) const;
    /// Adds the path of every difference, as deep as it goes: `prefix` + ".memoryMB", `prefix` +
    /// ".disk[2].label". Names that are no plain words are quoted: `prefix` + `."two words"`.
    void Diff(const OpenContent& other, const std::string& prefix, PropertyDiffSet& diffs) const;

private:
    friend class OpenContentWriter;
    friend class OpenItems::Iterator;
    friend class OpenValue;

    enum class TokenKind : std::uint8_t {
        Name,
        Null,
        False,
        True,
        Number,
        String,
        BeginArray,
        EndArray,
        BeginObject,
        EndObject,
    };

    struct Token {
        TokenKind kind;
        std::uint32_t position; ///< of the text; at a begin, of its end among the tokens
        std::uint32_t size;     ///< of the text; at a begin, the number of items

        friend bool operator==(const Token&, const Token&) = default;
    };

    std::string_view GetText(const Token& token) const;
    void Append(TokenKind kind, std::string_view text = {});
    /// Appends the token at `token` of `source` and what belongs to it.
    void AppendItem(const OpenContent& source, std::size_t token, std::size_t end);
    template <class AppendValue>
    void Set(std::string_view name, AppendValue appendValue);

    std::vector<Token> m_tokens;
    std::string m_text; ///< that of all tokens
};

/// Appends a member's name to a path: as it is, or quoted when it is no plain word.
TAVIK_API void AppendMemberName(std::string& path, std::string_view name);

} // namespace Tavik
