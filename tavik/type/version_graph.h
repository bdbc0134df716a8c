#pragma once

#include "tavik/type/version.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

/// All registered versions and what each includes. Changed under the registry's lock only.
class VersionGraph {
public:
    VersionGraph();
    ~VersionGraph();

    /// Adds the versions of a namespace and fills the writable parts of the record. A name that is taken by
    /// something else is appended to `errors`.
    void Add(const OrlinVersions& record, std::vector<std::string>& errors);
    /// Adds the inclusions of a namespace, whose versions and those they refer to have been added before. An
    /// inclusion of a version that nobody registered is appended to `errors`.
    void Connect(const OrlinVersions& record, std::vector<std::string>& errors);

    /// From here on the versions that have been added include what they include: they are read without a
    /// lock.
    void Seal() { m_sealed = m_versions.size(); }

    /// Borrowed; null when no version has that name.
    const Version* Find(std::string_view name) const;
    /// All versions in the order of registration.
    std::vector<const Version*> GetVersions() const;

private:
    Version* FindMutable(std::string_view name) const;
    InternalVersion* AddVersion(const VersionRecord& record, std::vector<std::string>& errors);
    void Include(const VersionInclusion& inclusion, std::vector<std::string>& errors);
    void Close();

    std::vector<std::unique_ptr<InternalVersion>> m_versions;
    std::vector<std::unique_ptr<OfficialVersion>> m_official;
    std::map<std::string, InternalVersion*, std::less<>> m_byName;
    std::uint32_t m_namespaceCount = 0;
    std::size_t m_sealed = 0; ///< number of versions that do not change any more
};

} // namespace Tavik
