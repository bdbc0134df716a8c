#include "tools/morvane/model/documentation.h"

#include "types/documentation.h"
#include "zabro/documentation.h"

#include <algorithm>
#include <span>
#include <unordered_map>

namespace Tool {

namespace {

/// The entries of each type, which stand side by side in the tables.
class Index {
public:
    Index() {
        Add(TypesTables::GetDocumentation());
        Add(ZabroTables::GetDocumentation());
    }

    std::span<const Tavik::Documentation> Find(std::string_view type) const {
        const auto found = m_entries.find(type);
        return found == m_entries.end() ? std::span<const Tavik::Documentation>() : found->second;
    }

private:
    void Add(std::span<const Tavik::Documentation> all) {
        while (!all.empty()) {
            const std::string_view type = all.front().type;
            const auto end = std::find_if(all.begin(), all.end(), [type](const Tavik::Documentation& entry) {
                return entry.type != type;
            });
            const auto count = static_cast<std::size_t>(end - all.begin());
            m_entries.emplace(type, all.first(count));
            all = all.subspan(count);
        }
    }

    std::unordered_map<std::string_view, std::span<const Tavik::Documentation>> m_entries;
};

} // namespace

std::string_view FindDocumentation(std::string_view type, std::string_view member) {
    static const Index index;
    for (const Tavik::Documentation& entry : index.Find(type)) {
        if (entry.member == nullptr ? member.empty() : member == entry.member) {
            return entry.text;
        }
    }
    return {};
}

std::string GetSummary(std::string_view type, std::string_view member) {
    const std::string_view text = FindDocumentation(type, member);
    std::string summary(text.substr(0, text.find("\n\n")));
    std::replace(summary.begin(), summary.end(), '\n', ' ');
    return summary;
}

} // namespace Tool
