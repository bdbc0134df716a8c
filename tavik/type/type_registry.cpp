#include "tavik/type/type_registry.h"

#include "pellum/error/exception.h"
#include "pellum/text/near_name.h"
#include "tavik/type/builtin_types.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/descriptor_compare.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/pending_loaders.h"
#include "tavik/type/type_index.h"
#include "tavik/type/version_graph.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <iterator>
#include <mutex>
#include <set>
#include <unordered_map>
#include <utility>

namespace Tavik {

constinit std::atomic<TypeInfoLoader*> gPendingLoaders{nullptr};

/// The look-up tables. Published as a whole and never changed or freed afterwards: readers hold no lock.
struct TypeRegistry::Index {
    TypeIndex types;
    std::unordered_map<std::string_view, const Version*> versions;
};

namespace {

/// Says that a load is running for as long as it lives, also when the load throws.
class LoadingScope {
public:
    explicit LoadingScope(std::atomic<bool>& isLoading)
        : m_isLoading(isLoading), m_isNested(isLoading.exchange(true, std::memory_order_relaxed)) {}

    ~LoadingScope() { m_isLoading.store(m_isNested, std::memory_order_release); }

    LoadingScope(const LoadingScope&) = delete;
    LoadingScope& operator=(const LoadingScope&) = delete;

private:
    std::atomic<bool>& m_isLoading;
    bool m_isNested;
};

/// Versions by where their names stand: the rows of one library share the texts of a few names. Remembers
/// some of those that were asked for. Good for one load: whoever loads next may have another text there.
class VersionsByText {
public:
    struct Entry {
        const char* name = nullptr;
        const Version* version = nullptr;
    };

    /// Where that name is remembered, or may be.
    Entry& At(const char* name) {
        const auto address = reinterpret_cast<std::uintptr_t>(name);
        return m_entries[(address ^ address >> 5U) % m_entries.size()];
    }

    void Clear() { m_entries = {}; }

private:
    std::array<Entry, 32> m_entries;
};

} // namespace

struct TypeRegistry::State {
    /// Recursive, because a loader function may look something up.
    std::recursive_mutex mutex;
    /// Libraries have been taken off the list of pending ones and are not published yet.
    std::atomic<bool> isLoading{false};
    std::atomic<const Index*> published{nullptr};
    std::vector<std::unique_ptr<const Index>> indexes;
    const Index* loading = nullptr;
    VersionGraph versions;
    std::vector<LoadedLibrary> libraries;
    std::vector<std::string> errors;
    std::set<std::string> unknownVersions;
    VersionsByText versionsByText; ///< of the load that is running
};

TypeRegistry& TypeRegistry::Instance() {
    // Never destroyed: types must outlive whatever else is destroyed when the process ends.
    static TypeRegistry& registry = *new TypeRegistry;
    return registry;
}

TypeRegistry::TypeRegistry() : m_state(std::make_unique<State>()) {
    for (const OrlinVersions* record : GetBuiltinVersions()) {
        m_state->versions.Add(*record, m_state->errors);
    }
    for (const OrlinVersions* record : GetBuiltinVersions()) {
        m_state->versions.Connect(*record, m_state->errors);
    }
    auto index = std::make_unique<Index>();
    m_state->loading = index.get();
    for (Type* type : GetBuiltinTypes()) {
        AddType(type, *index);
    }
    for (Type* type : GetBuiltinTypes()) {
        ResolveType(type);
    }
    AddVersions(*index);
    m_state->loading = nullptr;
    m_state->versionsByText.Clear();
    m_state->versions.Seal();
    m_state->published.store(index.get(), std::memory_order_release);
    m_state->indexes.push_back(std::move(index));
}

TypeRegistry::~TypeRegistry() = default;

void TypeRegistry::Load() {
    // In this order: whoever finds the list empty because of a load that is still running also finds that it
    // is.
    if (gPendingLoaders.load(std::memory_order_acquire) == nullptr
        && !m_state->isLoading.load(std::memory_order_acquire)) {
        return;
    }
    const std::lock_guard lock(m_state->mutex);
    const LoadingScope scope(m_state->isLoading);
    if (TypeInfoLoader* newest = gPendingLoaders.exchange(nullptr, std::memory_order_acq_rel)) {
        // The list is newest first; libraries are loaded in the order in which they registered.
        TypeInfoLoader* oldest = nullptr;
        while (newest != nullptr) {
            TypeInfoLoader* next = newest->m_next;
            newest->m_next = oldest;
            oldest = newest;
            newest = next;
        }
        LoadPending(oldest);
    }
}

void TypeRegistry::LoadPending(TypeInfoLoader* first) {
    // Versions and types may refer to those of any other library, so each step is done for all before the
    // next.
    for (const TypeInfoLoader* loader = first; loader != nullptr; loader = loader->m_next) {
        m_state->versions.Add(*loader->m_versions, m_state->errors);
    }
    for (const TypeInfoLoader* loader = first; loader != nullptr; loader = loader->m_next) {
        m_state->versions.Connect(*loader->m_versions, m_state->errors);
    }
    std::vector<Type*> created;
    for (const TypeInfoLoader* loader = first; loader != nullptr; loader = loader->m_next) {
        CreateTypes(*loader, created);
    }
    auto index = std::make_unique<Index>(*m_state->published.load(std::memory_order_relaxed));
    index->types.ReserveMore(created.size());
    for (Type* type : created) {
        AddType(type, *index);
    }
    AddVersions(*index);
    m_state->indexes.push_back(std::move(index));
    const Index* current = m_state->indexes.back().get();
    const Index* outer = std::exchange(m_state->loading, current);
    for (Type* type : created) {
        ResolveType(type);
    }
    m_state->loading = outer;
    m_state->versionsByText.Clear();
    m_state->versions.Seal();
    m_state->published.store(current, std::memory_order_release);
}

void TypeRegistry::CreateTypes(const TypeInfoLoader& loader, std::vector<Type*>& created) {
    LoadedLibrary library{loader.m_versions, {}};
    const auto reportFailure = [&](const std::string& reason) {
        m_state->errors.push_back(
            std::string("the types of namespace ") + loader.m_versions->namespaceName
            + " could not be created: " + reason);
    };
    try {
        int count = 0;
        Type** types = loader.m_load(count);
        library.types.assign(types, types + count);
    } catch (const std::exception& error) {
        reportFailure(error.what());
        return;
    } catch (...) {
        reportFailure("the loader function threw something that is no exception");
        return;
    }
    created.reserve(created.size() + library.types.size());
    std::copy_if(
        library.types.begin(), library.types.end(), std::back_inserter(created),
        [](const Type* type) { return type != nullptr; });
    m_state->libraries.push_back(std::move(library));
}

void TypeRegistry::AddType(Type* type, Index& index) {
    const Type* const known = index.types.Add(type);
    if (known == nullptr) {
        return;
    }
    const std::string difference = DescribeDifference(*known, *type);
    if (difference.empty()) {
        index.types.AddFreeNames();
        return;
    }
    // Neither name may lead to a type that the other one does not lead to.
    m_state->errors.push_back(
        std::string("type ") + type->GetName() + " (wire name " + type->GetWireName()
        + ") clashes with the registered type " + known->GetName() + " (wire name " + known->GetWireName()
        + "): " + difference + "; the first one stays");
}

void TypeRegistry::AddVersions(Index& index) const {
    for (const Version* version : m_state->versions.GetVersions()) {
        index.versions.emplace(version->GetName(), version);
    }
}

void TypeRegistry::ResolveType(Type* type) {
    type->m_version = FindLoadingVersion(type->GetInfo().version);
    switch (type->GetKind()) {
    case TypeKind::Data:
    case TypeKind::Fault: static_cast<DataObjectType*>(type)->Resolve(*this); break;
    case TypeKind::Managed: static_cast<ManagedObjectType*>(type)->Resolve(*this); break;
    default: break;
    }
}

void TypeRegistry::ReportError(std::string error) {
    m_state->errors.push_back(std::move(error));
}

const Type* TypeRegistry::FindLoading(const TypeInfo* info) const {
    return m_state->loading->types.FindByInfo(info);
}

const Version* TypeRegistry::FindLoadingVersion(const char* name) {
    if (name == nullptr) {
        return nullptr;
    }
    VersionsByText::Entry& known = m_state->versionsByText.At(name);
    if (name == known.name) {
        return known.version;
    }
    const Version* version = m_state->versions.Find(name);
    if (version == nullptr && m_state->unknownVersions.insert(name).second) {
        m_state->errors.push_back(std::string("no library has registered version ") + name);
    }
    known = {name, version};
    return version;
}

const TypeRegistry::Index& TypeRegistry::GetIndex() {
    Load();
    return *m_state->published.load(std::memory_order_acquire);
}

const Type* TypeRegistry::FindByName(std::string_view name) {
    return GetIndex().types.FindByName(name);
}

const Type* TypeRegistry::FindByWireName(std::string_view wireName) {
    return GetIndex().types.FindByWireName(wireName);
}

const Type* TypeRegistry::FindByInfo(const TypeInfo* info) {
    return GetIndex().types.FindByInfo(info);
}

const Version* TypeRegistry::FindVersion(std::string_view name) {
    const auto& versions = GetIndex().versions;
    const auto found = versions.find(name);
    return found == versions.end() ? nullptr : found->second;
}

const Version& TypeRegistry::GetVersion(std::string_view name, std::string_view namespaceName) {
    std::vector<std::string> known;
    for (const Version* version : GetVersions()) {
        std::vector<std::string> names{version->GetName()};
        if (version->GetNamespace() == namespaceName) {
            names.push_back(version->GetName().substr(version->GetName().rfind('.') + 1));
            names.push_back(version->GetLabel());
        }
        std::erase(names, std::string());
        if (std::find(names.begin(), names.end(), name) != names.end()) {
            return *version;
        }
        known.insert(known.end(), names.begin(), names.end());
    }
    const std::string near = Pellum::FindNearName(name, known);
    throw Pellum::Exception(
        "there is no version \"" + std::string(name) + '"'
        + (near.empty() ? "" : "; did you mean \"" + near + "\"?"));
}

std::vector<const Version*> TypeRegistry::GetVersions() {
    Load();
    const std::lock_guard lock(m_state->mutex);
    return m_state->versions.GetVersions();
}

std::vector<std::string> TypeRegistry::GetNames() {
    return GetIndex().types.GetNames();
}

std::vector<LoadedLibrary> TypeRegistry::GetLibraries() {
    Load();
    const std::lock_guard lock(m_state->mutex);
    return m_state->libraries;
}

std::vector<std::string> TypeRegistry::GetErrors() {
    Load();
    const std::lock_guard lock(m_state->mutex);
    return m_state->errors;
}

} // namespace Tavik
