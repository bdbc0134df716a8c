#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/export.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Tavik {

/// One API version, registered by the library of its namespace. Immutable once that library is loaded.
class TAVIK_API Version {
public:
    virtual ~Version();
    Version(const Version&) = delete;
    Version& operator=(const Version&) = delete;

    /// "morvane.version.version2"
    const std::string& GetName() const { return m_name; }

    /// "morvane"
    const std::string& GetNamespace() const { return m_namespace; }

    /// "2.0"; empty when the version has none.
    const std::string& GetLabel() const { return m_label; }

    /// Whether this is `other` or includes it, directly or through a chain of inclusions: whether what
    /// `other` introduced is part of this version.
    bool Includes(const Version& other) const;

    /// The versions that this one names itself, borrowed, in the order of their registration.
    const std::vector<const Version*>& GetDirectInclusions() const { return m_direct; }

protected:
    Version(std::size_t index, const VersionRecord& record);

private:
    friend class VersionGraph;

    /// Takes over all that `other` includes; returns whether that was anything new.
    bool Absorb(const Version& other);

    std::size_t m_index; ///< position in the graph, and in the bit sets
    std::string m_name;
    std::string m_namespace;
    std::string m_label;
    std::vector<const Version*> m_direct;
    std::vector<bool> m_included;
};

/// The runtime's own object for a version of a namespace: one for every version record.
class TAVIK_API InternalVersion final : public Version {
public:
    ~InternalVersion() override;

private:
    friend class VersionGraph;
    using Version::Version;
};

/// A version as it is offered to peers: one for every version record that is flagged official.
class TAVIK_API OfficialVersion final {
public:
    const Version& GetVersion() const { return *m_version; }

    const std::string& GetName() const { return m_version->GetName(); }

    const std::string& GetLabel() const { return m_version->GetLabel(); }

private:
    friend class VersionGraph;

    explicit OfficialVersion(const Version* version) : m_version(version) {}

    const Version* m_version;
};

/// Identity of a namespace, zero until the runtime registers the namespace's versions.
class TAVIK_API NamespaceId final {
public:
    constexpr NamespaceId() noexcept = default;

    bool IsRegistered() const { return m_name != nullptr; }

    /// The namespace's name, null before registration.
    const char* GetName() const { return m_name; }

    /// Number of the namespace, from 1 in the order of registration; 0 before it.
    std::uint32_t GetNumber() const { return m_number; }

private:
    friend class VersionGraph;

    const char* m_name = nullptr;
    std::uint32_t m_number = 0;
};

} // namespace Tavik
