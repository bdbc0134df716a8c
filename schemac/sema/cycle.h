#pragma once

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace Schemac::Sema {

/// Walks a graph depth first and tells every cycle that it runs into, as the chain of its nodes without the
/// return to the first. Keeps its own stack: a graph of any depth can be walked.
template <typename Node>
class CycleFinder {
public:
    /// Walks everything that can be reached from `start` and was not walked before. `next` gives the nodes
    /// that a node leads to, `found` takes a cycle.
    template <typename Next, typename Found>
    void Walk(const Node& start, const Next& next, const Found& found) {
        Enter(start, next);
        while (!m_path.empty()) {
            Frame& frame = m_path.back();
            if (frame.targets.empty()) {
                m_isOnPath[frame.node] = false;
                m_path.pop_back();
                continue;
            }
            const Node* target = frame.targets.back();
            frame.targets.pop_back();
            const auto known = m_isOnPath.find(target);
            if (known == m_isOnPath.end()) {
                Enter(*target, next);
            } else if (known->second) {
                found(PathFrom(target));
            }
        }
    }

private:
    struct Frame {
        const Node* node;
        std::vector<const Node*> targets; ///< still to visit, the next one last
    };

    template <typename Next>
    void Enter(const Node& node, const Next& next) {
        if (!m_isOnPath.emplace(&node, true).second) {
            return;
        }
        std::vector<const Node*> targets = next(node);
        std::reverse(targets.begin(), targets.end());
        m_path.push_back({&node, std::move(targets)});
    }

    std::vector<const Node*> PathFrom(const Node* first) const {
        std::vector<const Node*> path;
        auto frame = std::find_if(
            m_path.begin(), m_path.end(), [&](const Frame& entry) { return entry.node == first; });
        for (; frame != m_path.end(); ++frame) {
            path.push_back(frame->node);
        }
        return path;
    }

    std::vector<Frame> m_path;
    std::unordered_map<const Node*, bool> m_isOnPath; ///< false for what is walked to its end
};

} // namespace Schemac::Sema
