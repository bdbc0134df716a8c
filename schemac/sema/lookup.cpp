#include "schemac/sema/lookup.h"

#include "pellum/text/near_name.h"
#include "schemac/diagnostic/catalogue.h"

#include <algorithm>
#include <string_view>

namespace Schemac::Sema {

namespace {

/// The last `count` parts of a name.
std::string_view Tail(std::string_view name, std::size_t count, std::string_view separator) {
    std::size_t start = name.size();
    for (; count > 0; --count) {
        const std::size_t found = start == 0 ? std::string_view::npos : name.rfind(separator, start - 1);
        if (found == std::string_view::npos) {
            return name;
        }
        start = found;
    }
    return name.substr(start + separator.size());
}

/// Remembers the nearest of the names shown to it, the alphabetically first of equals.
class Nearest {
public:
    explicit Nearest(const Syntax::QualifiedName& wanted)
        : m_text(wanted.Text()),
          m_partCount(wanted.parts.size()),
          m_separator(wanted.isClassPath ? "::" : "."),
          m_limit(std::max<std::size_t>(1, std::min<std::size_t>(m_text.size() / 3, 4))) {}

    void Consider(std::string_view name) {
        const std::string_view tail = Tail(name, m_partCount, m_separator);
        if (tail.size() > m_text.size() + m_limit || m_text.size() > tail.size() + m_limit) {
            return;
        }
        const std::size_t distance = Pellum::EditDistance(m_text, tail);
        const bool isBetter = distance < m_distance || (distance == m_distance && name < m_name);
        if (distance <= m_limit && isBetter) {
            m_distance = distance;
            m_name = name;
        }
    }

    std::string Hint() const { return m_name.empty() ? "" : "; did you mean '" + m_name + "'?"; }

private:
    std::string m_text;
    std::size_t m_partCount;
    std::string_view m_separator;
    std::size_t m_limit;
    std::size_t m_distance = static_cast<std::size_t>(-1);
    std::string m_name;
};

/// Calls `tryScope` with `scope` and every scope around it, the nameless one last, until it gives something.
template <typename Function>
auto SearchOutward(std::string scope, Function tryScope) -> decltype(tryScope("")) {
    for (;;) {
        if (auto found = tryScope(scope)) {
            return found;
        }
        if (scope.empty()) {
            return nullptr;
        }
        const std::size_t dot = scope.rfind('.');
        scope.erase(dot == std::string::npos ? 0 : dot);
    }
}

/// Hints cost a look at every name, and nobody reads thousands of them.
constexpr std::size_t kMaxErrorsWithHint = 100;

/// The hint for a name that is not among `known`.
template <typename Map>
std::string HintFor(const Program& program, const Syntax::QualifiedName& name, const Map& known) {
    if (program.reporter.ErrorCount() > kMaxErrorsWithHint) {
        return {};
    }
    Nearest nearest(name);
    for (const auto& entry : known) {
        nearest.Consider(entry.first);
    }
    return nearest.Hint();
}

template <typename Map>
auto FindIn(const Map& map, const std::string& key) -> typename Map::mapped_type {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : found->second;
}

} // namespace

const Model::Type* FindType(
    const Program& program, const Syntax::QualifiedName& name, const std::string& scope) {
    const std::string text = name.Text();
    const auto& types = name.isClassPath ? program.typesByClass : program.typesByName;
    const Model::Type* type = nullptr;
    if (name.isClassPath) {
        type = FindIn(types, text);
    } else {
        type = SearchOutward(scope, [&](const std::string& prefix) {
            return FindIn(types, prefix.empty() ? text : prefix + "." + text);
        });
    }
    if (type == nullptr) {
        program.reporter.Report(name.span, Diagnostics::kUnknownType, text, HintFor(program, name, types));
    }
    return type;
}

const Model::Version* FindVersion(
    const Program& program, const Syntax::QualifiedName& name, const std::string& nameSpace) {
    const std::string text = name.Text();
    const Model::Version* version = nullptr;
    if (name.parts.size() > 1) {
        version = FindIn(program.versionsByName, text);
    } else {
        version = SearchOutward(nameSpace, [&](const std::string& prefix) {
            return FindIn(program.versionsByName, prefix + ".version." + text);
        });
    }
    if (version == nullptr) {
        program.reporter.Report(
            name.span, Diagnostics::kUnknownVersion, text, HintFor(program, name, program.versionsByName));
    }
    return version;
}

} // namespace Schemac::Sema
