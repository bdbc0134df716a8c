#include "tavik/type/version_graph.h"

namespace Tavik {

Version::Version(std::size_t index, const VersionRecord& record)
    : m_index(index),
      m_name(record.name),
      m_namespace(record.namespaceName),
      m_label(record.label != nullptr ? record.label : ""),
      m_included(index + 1) {
    m_included[index] = true;
    m_included[0] = true; // the runtime's own version was the first to come, and is part of every other
}

Version::~Version() = default;
InternalVersion::~InternalVersion() = default;

bool Version::Includes(const Version& other) const {
    return other.m_index < m_included.size() && m_included[other.m_index];
}

bool Version::Absorb(const Version& other) {
    bool changed = false;
    if (m_included.size() < other.m_included.size()) {
        m_included.resize(other.m_included.size());
    }
    for (std::size_t i = 0; i < other.m_included.size(); ++i) {
        if (other.m_included[i] && !m_included[i]) {
            m_included[i] = true;
            changed = true;
        }
    }
    return changed;
}

VersionGraph::VersionGraph() = default;
VersionGraph::~VersionGraph() = default;

Version* VersionGraph::FindMutable(std::string_view name) const {
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second;
}

const Version* VersionGraph::Find(std::string_view name) const {
    return FindMutable(name);
}

std::vector<const Version*> VersionGraph::GetVersions() const {
    std::vector<const Version*> versions;
    versions.reserve(m_versions.size());
    for (const auto& version : m_versions) {
        versions.push_back(version.get());
    }
    return versions;
}

InternalVersion* VersionGraph::AddVersion(const VersionRecord& record, std::vector<std::string>& errors) {
    if (const auto known = m_byName.find(record.name); known != m_byName.end()) {
        const std::string& label = known->second->GetLabel();
        if (record.label != nullptr && label != record.label) {
            errors.push_back(
                "version " + known->first + " is registered with label \"" + label
                + "\" and again with label \"" + record.label + "\"");
        }
        return known->second;
    }
    m_versions.push_back(std::unique_ptr<InternalVersion>(new InternalVersion(m_versions.size(), record)));
    InternalVersion* added = m_versions.back().get();
    m_byName.emplace(added->GetName(), added);
    return added;
}

void VersionGraph::Include(const VersionInclusion& inclusion, std::vector<std::string>& errors) {
    Version* version = FindMutable(inclusion.version);
    Version* included = FindMutable(inclusion.included);
    if (version == nullptr || included == nullptr) {
        errors.push_back(
            std::string("version ") + inclusion.version + " can not include " + inclusion.included
            + ": no library has registered " + (version == nullptr ? inclusion.version : inclusion.included));
        return;
    }
    for (const Version* known : version->m_direct) {
        if (known == included) {
            return;
        }
    }
    if (version->m_index < m_sealed) {
        errors.push_back(
            std::string("version ") + inclusion.version + " can not include " + inclusion.included
            + ": it has been in use since an earlier library was loaded");
        return;
    }
    version->m_direct.push_back(included);
}

void VersionGraph::Close() {
    for (bool changed = true; changed;) {
        changed = false;
        for (const auto& version : m_versions) {
            for (const Version* included : version->m_direct) {
                changed = version->Absorb(*included) || changed;
            }
        }
    }
}

void VersionGraph::Connect(const OrlinVersions& record, std::vector<std::string>& errors) {
    for (std::uint32_t i = 0; i < record.inclusionCount; ++i) {
        Include(record.inclusions[i], errors);
    }
    Close();
}

void VersionGraph::Add(const OrlinVersions& record, std::vector<std::string>& errors) {
    // Oldest first, so that a listing of all versions reads in the order of their making.
    std::vector<InternalVersion*> added(record.versionCount);
    for (std::uint32_t i = record.versionCount; i-- > 0;) {
        added[i] = AddVersion(record.versions[i], errors);
    }
    if (record.namespaceId != nullptr && !record.namespaceId->IsRegistered()) {
        record.namespaceId->m_name = record.namespaceName;
        record.namespaceId->m_number = ++m_namespaceCount;
    }
    std::uint32_t officialCount = 0;
    for (std::uint32_t i = 0; i < record.versionCount; ++i) {
        if (record.internalVersions != nullptr) {
            record.internalVersions[i] = added[i];
        }
        const bool official = (record.versions[i].flags & kOfficialVersionFlag) != 0;
        if (official && record.officialVersions != nullptr && officialCount < record.officialCount) {
            m_official.push_back(std::unique_ptr<OfficialVersion>(new OfficialVersion(added[i])));
            record.officialVersions[officialCount++] = m_official.back().get();
        }
    }
    // The newest official version stands first.
    if (officialCount > 0 && record.releaseCandidateVersion != nullptr) {
        *record.releaseCandidateVersion = record.officialVersions[0];
    }
}

} // namespace Tavik
