#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/value/data_object.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What JSON documents of objects have to look like.
namespace CatalogueTests {

/// A member of an object: its name and its value's text.
using Member = std::pair<std::string, std::string>;
using Members = std::vector<Member>;

struct DocumentOptions {
    bool showSecrets = true;
    std::optional<std::size_t> version; ///< number of the version that it is written for
};

/// Writes values by the descriptors.
class ExpectedDocument {
public:
    explicit ExpectedDocument(const DocumentOptions& options = {}) : m_options(options) {}

    /// The whole document on one line.
    std::string Write(const Tavik::DataObject& object);
    /// The members of an object, without its type.
    Members WriteMembers(const Tavik::DataObject& object, const std::string& path = {});

    /// The place of the first value whose type the version does not have, and that type's name; both empty
    /// when there is none.
    const std::string& GetRefusedPath() const { return m_refusedPath; }

    const std::string& GetRefusedType() const { return m_refusedType; }

private:
    std::string WriteValue(const Tavik::Any& value, const Tavik::Type* declared, const std::string& path);
    std::string WriteObject(
        const Tavik::DataObject& object, const Tavik::Type* declared, const std::string& path);
    std::string WriteArray(const Tavik::ArrayBase& array, const std::string& path);
    std::string WritePlain(const Tavik::Type& type, const void* value, const std::string& path);
    void CheckVersion(const Tavik::TypeInfo& type, const std::string& path);

    DocumentOptions m_options;
    std::string m_refusedPath;
    std::string m_refusedType;
};

/// A text in quotes.
std::string Quoted(std::string_view text);

/// A document with every member on a line of its own: "$type" on line 2, `members[i]` on line 3 + i, the
/// closing brace behind them.
std::string WriteLines(const Tavik::DataObjectType& type, const Members& members);

} // namespace CatalogueTests
