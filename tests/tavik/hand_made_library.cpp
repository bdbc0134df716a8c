#include "tests/tavik/hand_made_library.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/managed_object_type.h"

namespace {

/// Registered and not loaded yet. The runtime loads libraries in the order of their registration.
std::deque<HandMadeLibrary*>& Registered() {
    static std::deque<HandMadeLibrary*> registered;
    return registered;
}

constexpr Tavik::EnumFuncs kNoFunctions{};

Tavik::OpenContent* NoContent(Tavik::DataObject* /*object*/) {
    return nullptr;
}

} // namespace

HandMadeLibrary& HandMadeLibrary::Make(const char* nameSpace) {
    static std::deque<HandMadeLibrary>& all = *new std::deque<HandMadeLibrary>;
    HandMadeLibrary& library = all.emplace_back();
    library.m_namespace = nameSpace;
    return library;
}

void HandMadeLibrary::AddVersion(const char* name, const char* label, std::uint32_t flags) {
    // Newest first, like generated records.
    m_versionRecords.insert(
        m_versionRecords.begin(), {name, m_namespace, label, 0, nullptr, m_namespace, 0, flags});
}

void HandMadeLibrary::AddInclusion(const char* version, const char* included) {
    m_inclusions.push_back({version, included});
}

const Tavik::TypeInfo* HandMadeLibrary::AddData(
    Tavik::TypeInfo type, const Tavik::TypeInfo* base, std::vector<Tavik::PropertyDescriptor> properties,
    bool isOpen) {
    const Tavik::TypeInfo* info = &m_infos.emplace_back(type);
    properties.push_back({});
    Tavik::DataTypeInfo& record = m_data.emplace_back();
    record.type = info;
    record.base = base;
    record.properties = m_properties.emplace_back(std::move(properties)).data();
    m_slots.emplace_back([&record, isOpen] {
        return isOpen ? Tavik::CreateDataObjectType(&record, {&NoContent})
                      : Tavik::CreateDataObjectType(&record);
    });
    return info;
}

const Tavik::TypeInfo* HandMadeLibrary::AddEnum(Tavik::TypeInfo type, std::vector<const char*> tags) {
    const Tavik::TypeInfo* info = &m_infos.emplace_back(type);
    tags.push_back(nullptr);
    Tavik::EnumTypeInfo& record = m_enums.emplace_back();
    record = {info, m_tags.emplace_back(std::move(tags)).data()};
    m_slots.emplace_back([&record] { return new Tavik::EnumType(&record, &kNoFunctions); });
    return info;
}

const Tavik::TypeInfo* HandMadeLibrary::AddManaged(
    Tavik::TypeInfo type, std::vector<Tavik::MethodDescriptor> methods) {
    const Tavik::TypeInfo* info = &m_infos.emplace_back(type);
    for (Tavik::MethodDescriptor& method : methods) {
        method.parameters = m_properties.emplace_back(std::vector<Tavik::PropertyDescriptor>(1)).data();
    }
    methods.push_back({});
    Tavik::ManagedTypeInfo& record = m_managed.emplace_back();
    record.type = info;
    record.properties = m_properties.emplace_back(std::vector<Tavik::PropertyDescriptor>(1)).data();
    record.methods = m_methods.emplace_back(std::move(methods)).data();
    m_slots.emplace_back([&record] { return Tavik::CreateManagedObjectType(&record); });
    return info;
}

void HandMadeLibrary::AddNullSlot() {
    m_slots.emplace_back([] { return nullptr; });
}

void HandMadeLibrary::Register() {
    m_versions.namespaceName = m_namespace;
    m_versions.namespaceId = &namespaceId;
    m_versions.versions = m_versionRecords.data();
    m_versions.inclusions = m_inclusions.data();
    m_versions.officialVersions = official;
    m_versions.internalVersions = internal;
    m_versions.releaseCandidateVersion = &releaseCandidate;
    m_versions.versionCount = static_cast<std::uint32_t>(m_versionRecords.size());
    m_versions.officialCount = m_versions.versionCount;
    m_versions.inclusionCount = static_cast<std::uint32_t>(m_inclusions.size());
    Registered().push_back(this);
    m_registration = std::make_unique<Tavik::TypeInfoLoader>(&m_versions, &Load);
}

Tavik::Type** HandMadeLibrary::Load(int& count) {
    HandMadeLibrary& library = *Registered().front();
    Registered().pop_front();
    ++library.m_loadCount;
    if (library.m_onLoad) {
        library.m_onLoad();
    }
    for (const auto& make : library.m_slots) {
        library.m_types.push_back(make());
    }
    count = static_cast<int>(library.m_types.size());
    return library.m_types.data();
}
