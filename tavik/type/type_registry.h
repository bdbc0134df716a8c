#pragma once

#include "tavik/export.h"
#include "tavik/type/type_info_loader.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

class Type;
class Version;

/// What one library registered.
struct LoadedLibrary {
    const OrlinVersions* versions; ///< borrowed
    std::vector<Type*> types;      ///< in slot order; entries may be null
};

/// All types and versions known to the process. Look-ups first load the libraries that have registered since;
/// all functions may be called from any thread. Nothing found here is ever freed.
///
/// Two libraries may register the same name. When the descriptions are equal the first one stays; when they
/// differ it stays as well and the clash is an error that names both. No clash ends the process.
class TAVIK_API TypeRegistry {
public:
    static TypeRegistry& Instance();

    /// Loads what has registered and is not loaded yet. A loader function that throws leaves its library
    /// unloaded and an error behind.
    void Load();

    /// By dotted name, wire name, or descriptor or a copy of it. Borrowed; null when unknown.
    const Type* FindByName(std::string_view name);
    const Type* FindByWireName(std::string_view wireName);
    const Type* FindByInfo(const TypeInfo* info);
    /// By version name. Borrowed; null when unknown.
    const Version* FindVersion(std::string_view name);
    /// The version that a person or a configuration means: by full name, or, within `namespaceName`, by label
    /// ("7.0") or last name ("version7"). Throws `Pellum::Exception`, with a suggestion, when there is none,
    /// so that a misspelt name never becomes a null version, which stands for no restriction.
    const Version& GetVersion(std::string_view name, std::string_view namespaceName);

    /// All versions, in the order of registration.
    std::vector<const Version*> GetVersions();
    /// Names of all types, for suggestions; dotted and wire names alike, unordered.
    std::vector<std::string> GetNames();
    /// The loaded libraries in the order of registration; the runtime's own types are not among them.
    std::vector<LoadedLibrary> GetLibraries();
    /// What was wrong with the registered descriptions, in plain words; empty when all is well.
    std::vector<std::string> GetErrors();

private:
    friend class DataObjectType;
    friend class ManagedObjectType;
    struct State;
    struct Index;

    TypeRegistry();
    ~TypeRegistry();

    /// The published look-up tables, after loading what is pending.
    const Index& GetIndex();
    void LoadPending(TypeInfoLoader* first);
    void CreateTypes(const TypeInfoLoader& loader, std::vector<Type*>& created);
    void AddType(Type* type, Index& index);
    void AddVersions(Index& index) const;
    void ResolveType(Type* type);
    void ReportError(std::string error);

    /// For use while a load is running: null when unknown.
    const Type* FindLoading(const TypeInfo* info) const;
    /// Null for null, and for a name that is unknown, which is reported once.
    const Version* FindLoadingVersion(const char* name);

    std::unique_ptr<State> m_state;
};

} // namespace Tavik
