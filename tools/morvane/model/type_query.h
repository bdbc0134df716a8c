#pragma once

#include "tavik/type/type.h"
#include "tavik/type/version.h"

#include <string>
#include <utility>
#include <vector>

namespace Tool {

/// What the types that someone looks for have in common; what is empty puts no restriction on them.
struct TypeQuery {
    std::vector<std::string> words; ///< all of them in the name, the wire name or the documentation
    std::string kind;
    std::string version; ///< that they are part of
    std::string since;   ///< version that introduced them
    std::string base;    ///< type that they derive from, directly or not
    std::string area;
    bool members = false; ///< look for the words in the members' names and documentation, too
    bool all = false;     ///< the types of the other libraries, too
};

/// The types that a query is about.
class TypeFinder {
public:
    /// `query` is borrowed. Throws `Pellum::Exception`, with suggestions, for a type, version or area that
    /// there is not.
    explicit TypeFinder(const TypeQuery& query);

    bool Accepts(const Tavik::Type& type) const { return HasFacts(type) && HasWords(type); }

    /// Sorted by area and name, the area "core" and the interface's own first.
    std::vector<const Tavik::Type*> Find() const;
    /// What the members of a type are called in which words of the query occur that do not occur in the type
    /// itself.
    std::vector<std::string> FindMembersWithWords(const Tavik::Type& type) const;
    /// Why nothing was found, and what to do instead.
    std::string ExplainNothing() const;

private:
    bool HasFacts(const Tavik::Type& type) const;
    bool HasWords(const Tavik::Type& type) const;
    std::vector<const Tavik::Type*> GetTypes() const;
    std::string FindNearWord(const std::string& word) const;

    const TypeQuery& m_query;
    const Tavik::Version* m_version;
    const Tavik::Version* m_since;
    const Tavik::Type* m_base;
};

/// Each area with the number of types in it and in the deeper ones, in the order in which types are listed.
std::vector<std::pair<std::string, std::size_t>> CountTypesOfAreas(bool all);

} // namespace Tool
