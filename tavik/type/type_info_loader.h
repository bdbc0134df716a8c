#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/export.h"

namespace Tavik {

class Type;

/// Creates a library's type objects: sets `count` and returns the table, which stays the library's. Entries
/// may be null. Called once.
using LoaderFunction = Type** (*)(int& count);

/// Registers a library with the runtime. Constructing the object only links it into the runtime's list; the
/// loader function is called on the runtime's first look-up after that, or by `TypeRegistry::Load`. Both
/// arguments are borrowed for the rest of the process, and so is the object: libraries that hold one are
/// never unloaded.
class TAVIK_API TypeInfoLoader {
public:
    TypeInfoLoader(const OrlinVersions* versions, LoaderFunction load) noexcept;
    TypeInfoLoader(const TypeInfoLoader&) = delete;
    TypeInfoLoader& operator=(const TypeInfoLoader&) = delete;

private:
    friend class TypeRegistry;

    const OrlinVersions* m_versions;
    LoaderFunction m_load;
    TypeInfoLoader* m_next;
};

} // namespace Tavik
