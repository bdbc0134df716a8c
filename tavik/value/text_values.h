#pragma once

#include "tavik/descriptor/records.h" // before these names, which kinds of types have, too

#include <string>
#include <utility>

namespace Tavik {

/// A text with a meaning of its own. `Tag` keeps the kinds apart.
template <class Tag>
class TextValue {
public:
    TextValue() = default;

    explicit TextValue(std::string text) : m_text(std::move(text)) {}

    const std::string& GetText() const { return m_text; }

    friend bool operator==(const TextValue&, const TextValue&) = default;

private:
    std::string m_text;
};

/// Value of a `typeName` property: the wire name of a type.
using TypeName = TextValue<struct TypeNameTag>;

/// Value of a `propertyPath` property: "storage.disk[2].size".
using PropertyPath = TextValue<struct PropertyPathTag>;

} // namespace Tavik
