#include "schemac/emit/template.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace Schemac::Emit {

namespace {

class Filler {
public:
    Filler(std::string_view text, const std::vector<Hole>& holes) : m_text(text), m_holes(holes) {
        if (m_text.starts_with('\n')) {
            m_text.remove_prefix(1);
        }
    }

    std::string Run() {
        while (!m_text.empty()) {
            const std::size_t end = m_text.find('\n');
            const std::size_t length = end == std::string_view::npos ? m_text.size() : end + 1;
            FillLine(m_text.substr(0, length));
            m_text.remove_prefix(length);
        }
        for (const Hole& hole : m_holes) {
            if (!m_used.contains(hole.first)) {
                throw std::logic_error("the template has no hole '" + std::string(hole.first) + "'");
            }
        }
        return std::move(m_result);
    }

private:
    void FillLine(std::string_view line) {
        const std::string_view indent = line.substr(0, std::min(line.find_first_not_of(' '), line.size()));
        const std::string_view content = line.substr(indent.size());
        const std::size_t close = content.starts_with('$') ? content.find('$', 1) : std::string_view::npos;
        const bool isOneHole = close != std::string_view::npos && close > 1
                            && (content.substr(close + 1) == "\n" || content.size() == close + 1);
        if (isOneHole) {
            std::string_view value = Value(content.substr(1, close - 1));
            if (value.empty()) {
                return;
            }
            if (value.ends_with('\n')) {
                value.remove_suffix(1);
            }
            AddIndented(indent, value, true);
            m_result += content.substr(close + 1);
            return;
        }
        m_result += indent;
        FillInside(indent, content);
    }

    void FillInside(std::string_view indent, std::string_view content) {
        for (;;) {
            const std::size_t open = content.find('$');
            m_result += content.substr(0, open);
            if (open == std::string_view::npos) {
                return;
            }
            const std::size_t close = content.find('$', open + 1);
            if (close == std::string_view::npos) {
                throw std::logic_error("'$' opens no hole in '" + std::string(content) + "'");
            }
            if (close == open + 1) {
                m_result += '$';
            } else {
                AddIndented(indent, Value(content.substr(open + 1, close - open - 1)), false);
            }
            content.remove_prefix(close + 1);
        }
    }

    /// Adds a value whose lines, after the first one or all, stand behind `indent`. Empty lines stay empty.
    void AddIndented(std::string_view indent, std::string_view value, bool indentsFirst) {
        for (bool isFirst = true;; isFirst = false) {
            const std::size_t end = value.find('\n');
            const std::string_view line = value.substr(0, end);
            if (!line.empty() && (indentsFirst || !isFirst)) {
                m_result += indent;
            }
            m_result += line;
            if (end == std::string_view::npos) {
                return;
            }
            m_result += '\n';
            value.remove_prefix(end + 1);
        }
    }

    std::string_view Value(std::string_view name) {
        const auto found = std::find_if(
            m_holes.begin(), m_holes.end(), [&](const Hole& hole) { return hole.first == name; });
        if (found == m_holes.end()) {
            throw std::logic_error("nothing is given for the hole '" + std::string(name) + "'");
        }
        m_used.insert(found->first);
        return found->second;
    }

    std::string_view m_text;
    const std::vector<Hole>& m_holes;
    std::set<std::string_view> m_used;
    std::string m_result;
};

} // namespace

std::string Fill(std::string_view text, const std::vector<Hole>& holes) {
    return Filler(text, holes).Run();
}

} // namespace Schemac::Emit
