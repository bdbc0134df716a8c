#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/type_info_loader.h"
#include "tavik/type/version.h"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

/// A type library whose records are made at run time. Its types can be looked up and nothing else. All texts
/// are borrowed: literals. Libraries live until the process ends, like real ones.
class HandMadeLibrary {
public:
    static HandMadeLibrary& Make(const char* nameSpace);

    void AddVersion(const char* name, const char* label, std::uint32_t flags = 0);
    void AddInclusion(const char* version, const char* included);

    /// Types take the slots in the order in which they are added. `properties` needs no end row.
    const Tavik::TypeInfo* AddData(
        Tavik::TypeInfo type, const Tavik::TypeInfo* base,
        std::vector<Tavik::PropertyDescriptor> properties = {}, bool isOpen = false);
    const Tavik::TypeInfo* AddEnum(Tavik::TypeInfo type, std::vector<const char*> tags);
    const Tavik::TypeInfo* AddManaged(Tavik::TypeInfo type, std::vector<Tavik::MethodDescriptor> methods);
    void AddNullSlot();

    /// Runs at the start of the loader function.
    void OnLoad(std::function<void()> action) { m_onLoad = std::move(action); }

    /// Constructs the registration object.
    void Register();

    const Tavik::OrlinVersions& GetVersions() const { return m_versions; }

    int GetLoadCount() const { return m_loadCount; }

    Tavik::NamespaceId namespaceId;
    const Tavik::OfficialVersion* official[8] = {};
    const Tavik::InternalVersion* internal[8] = {};
    const Tavik::OfficialVersion* releaseCandidate = nullptr;

private:
    static Tavik::Type** Load(int& count);

    const char* m_namespace;
    std::vector<Tavik::VersionRecord> m_versionRecords;
    std::vector<Tavik::VersionInclusion> m_inclusions;
    Tavik::OrlinVersions m_versions{};
    std::deque<Tavik::TypeInfo> m_infos;
    std::deque<std::vector<Tavik::PropertyDescriptor>> m_properties;
    std::deque<std::vector<Tavik::MethodDescriptor>> m_methods;
    std::deque<std::vector<const char*>> m_tags;
    std::deque<Tavik::DataTypeInfo> m_data;
    std::deque<Tavik::EnumTypeInfo> m_enums;
    std::deque<Tavik::ManagedTypeInfo> m_managed;
    std::vector<std::function<Tavik::Type*()>> m_slots;
    std::vector<Tavik::Type*> m_types;
    std::function<void()> m_onLoad;
    std::unique_ptr<Tavik::TypeInfoLoader> m_registration;
    int m_loadCount = 0;
};
