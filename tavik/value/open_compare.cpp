#include "tavik/value/open_content.h"
#include "tavik/value/property_diff_set.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Tavik {

namespace {

/// What stands at one place of two contents; nothing where one has no such place.
struct Pair {
    std::string_view name; ///< empty for elements
    std::optional<OpenValue> a;
    std::optional<OpenValue> b;
};

/// Members by name, in linear time as long as both have them in the same order.
std::vector<Pair> MatchMembers(OpenItems a, OpenItems b) {
    const std::vector<OpenItem> others(b.begin(), b.end());
    std::vector<bool> isMatched(others.size());
    std::vector<std::size_t> byName; // made when it is needed
    const auto find = [&](std::string_view name) {
        if (byName.empty()) {
            for (std::size_t i = 0; i < others.size(); ++i) {
                byName.push_back(i);
            }
            std::sort(byName.begin(), byName.end(), [&](std::size_t i, std::size_t k) {
                return others[i].name < others[k].name;
            });
        }
        const auto found =
            std::lower_bound(byName.begin(), byName.end(), name, [&](std::size_t i, std::string_view wanted) {
                return others[i].name < wanted;
            });
        return found != byName.end() && others[*found].name == name ? *found : others.size();
    };

    std::vector<Pair> pairs;
    pairs.reserve(others.size());
    std::size_t next = 0;
    for (const OpenItem item : a) {
        const bool isNext = next < others.size() && others[next].name == item.name;
        const std::size_t match = isNext ? next : find(item.name);
        if (match == others.size()) {
            pairs.push_back({item.name, item.value, {}});
            continue;
        }
        pairs.push_back({item.name, item.value, others[match].value});
        isMatched[match] = true;
        next = match + 1;
    }
    for (std::size_t i = 0; i < others.size(); ++i) {
        if (!isMatched[i]) {
            pairs.push_back({others[i].name, {}, others[i].value});
        }
    }
    return pairs;
}

std::vector<Pair> MatchElements(OpenItems a, OpenItems b) {
    std::vector<Pair> pairs;
    for (const OpenItem item : a) {
        pairs.push_back({{}, item.value, {}});
    }
    std::size_t next = 0;
    for (const OpenItem item : b) {
        if (next == pairs.size()) {
            pairs.emplace_back();
        }
        pairs[next++].b = item.value;
    }
    return pairs;
}

/// Goes through two contents side by side, place by place, with a stack of its own.
class Comparison {
public:
    /// `diffs` gets the paths of the differences; null to stop at the first one.
    Comparison(bool partial, PropertyDiffSet* diffs) : m_partial(partial), m_diffs(diffs) {}

    /// Whether there was no difference.
    bool Run(const OpenContent& a, const OpenContent& b, const std::string& prefix) {
        m_path = prefix;
        m_frames.push_back({MatchMembers(a.GetItems(), b.GetItems()), false, m_path.size()});
        while (!m_frames.empty() && (m_equal || m_diffs != nullptr)) {
            Frame& frame = m_frames.back();
            m_path.resize(frame.pathSize);
            if (frame.next == frame.pairs.size()) {
                m_frames.pop_back();
            } else {
                const std::size_t index = frame.next++;
                Compare(frame.pairs[index], frame.isArray, index);
            }
        }
        return m_equal;
    }

private:
    /// The places inside of two objects or two arrays.
    struct Frame {
        std::vector<Pair> pairs;
        bool isArray;
        std::size_t pathSize; ///< of the path of the two
        std::size_t next = 0;
    };

    void Compare(const Pair pair, bool isElement, std::size_t index) {
        if (m_partial && !isElement && !pair.b) {
            return; // not asked for
        }
        if (m_diffs != nullptr) {
            ExtendPath(pair.name, isElement, index);
        }
        if (!pair.a || !pair.b || pair.a->GetKind() != pair.b->GetKind()) {
            Differ();
            return;
        }
        switch (pair.a->GetKind()) {
        case OpenKind::Object:
            m_frames.push_back({MatchMembers(pair.a->GetItems(), pair.b->GetItems()), false, m_path.size()});
            break;
        case OpenKind::Array:
            m_frames.push_back({MatchElements(pair.a->GetItems(), pair.b->GetItems()), true, m_path.size()});
            break;
        default:
            if (pair.a->GetText() != pair.b->GetText()) {
                Differ();
            }
        }
    }

    void ExtendPath(std::string_view name, bool isElement, std::size_t index) {
        if (isElement) {
            m_path += '[' + std::to_string(index) + ']';
        } else {
            m_path += '.';
            AppendMemberName(m_path, name);
        }
    }

    void Differ() {
        m_equal = false;
        if (m_diffs != nullptr) {
            m_diffs->Add(m_path);
        }
    }

    const bool m_partial;
    PropertyDiffSet* const m_diffs;
    bool m_equal = true;
    std::string m_path; ///< of the place that is being compared
    std::vector<Frame> m_frames;
};

} // namespace

bool OpenContent::IsEqual(const OpenContent& other, bool partial) const {
    if (m_tokens == other.m_tokens && m_text == other.m_text) {
        return true;
    }
    return Comparison(partial, nullptr).Run(*this, other, {});
}

void OpenContent::Diff(const OpenContent& other, const std::string& prefix, PropertyDiffSet& diffs) const {
    Comparison(false, &diffs).Run(*this, other, prefix);
}

} // namespace Tavik
