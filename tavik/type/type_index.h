#pragma once

#include "tavik/type/hash_positions.h"
#include "tavik/type/type.h"

#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

/// Types by descriptor, name and wire name. All types are borrowed. Not synchronised.
class TypeIndex {
public:
    /// Makes room for that many types more.
    void ReserveMore(std::size_t count);

    /// Adds a type, to be found by its descriptor and, unless another type has one of its names, by both of
    /// them. That other type is returned then, null otherwise. A descriptor that is known stays with its
    /// type.
    Type* Add(Type* type);
    /// Has the type that was added last be found by those of its names that no other type has.
    void AddFreeNames();

    /// The type of that record or, when there is none, of one that it may be a copy of. Null when unknown.
    Type* FindByInfo(const TypeInfo* info) const;
    Type* FindByName(std::string_view name) const;
    Type* FindByWireName(std::string_view wireName) const;

    /// All names and wire names by which types are found, unordered.
    std::vector<std::string> GetNames() const;

private:
    /// The type of exactly that record; null when unknown.
    Type* FindRecord(const TypeInfo& info) const;
    /// A name and its hash.
    struct Name;

    /// A type and its names with their lengths, so that comparing them need not reach into the type.
    struct Entry {
        Type* type;
        std::string_view name;
        std::string_view wireName;
    };

    std::uint32_t FindName(const Name& name) const;
    std::uint32_t FindWireName(const Name& wireName) const;
    /// Null for no position.
    Type* Get(std::uint32_t position) const;

    std::vector<Entry> m_types;
    HashPositions m_byInfo;
    HashPositions m_byName;
    HashPositions m_byWireName;
};

} // namespace Tavik
