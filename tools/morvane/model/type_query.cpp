#include "tools/morvane/model/type_query.h"

#include "pellum/error/exception.h"
#include "pellum/text/near_name.h"
#include "tools/morvane/model/documentation.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/lookup.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/words.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace Tool {

namespace {

using TypeList = std::vector<const Tavik::Type*>;

/// Whether the word is in one of the names of the type or in its documentation.
bool IsInType(const Tavik::Type& type, const std::string& word) {
    return ContainsWord(type.GetName(), word) || ContainsWord(type.GetWireName(), word)
        || ContainsWord(FindDocumentation(type.GetName()), word);
}

bool IsInMember(const Member& member, const std::string& word) {
    return ContainsWord(member.name, word)
        || (member.method != nullptr && ContainsWord(member.method->wireName, word))
        || ContainsWord(FindDocumentation(member.owner->GetName(), member.name), word);
}

bool IsInMembers(const Tavik::Type& type, const std::string& word) {
    const auto members = GetOwnMembers(type);
    return std::any_of(
        members.begin(), members.end(), [&word](const Member& member) { return IsInMember(member, word); });
}

/// "VolumeInfo" gives "Volume" and "Info".
void AppendWords(const std::string& name, std::vector<std::string>& words) {
    std::string word;
    char last = '.';
    for (const char c : name + '.') {
        const bool startsWord = c >= 'A' && c <= 'Z' && (last < 'A' || last > 'Z');
        if ((c == '.' || startsWord) && !word.empty()) {
            words.push_back(std::exchange(word, {}));
        }
        if (c != '.') {
            word += c;
        }
        last = c;
    }
}

void CheckArea(const std::string& area, bool all) {
    if (area.empty()) {
        return;
    }
    std::vector<std::string> known;
    std::string list;
    for (const auto& [name, count] : CountTypesOfAreas(all)) {
        if (ToLower(name) == ToLower(area)) {
            return;
        }
        known.push_back(name);
        list += (list.empty() ? "" : ", ") + name + ' ' + std::to_string(count);
    }
    throw Pellum::Exception(
        "there is no area \"" + area + '"' + DidYouMean(Pellum::FindNearName(area, known))
        + "\nThe areas, with their numbers of types: " + list);
}

} // namespace

TypeFinder::TypeFinder(const TypeQuery& query)
    : m_query(query),
      m_version(FindVersion(query.version)),
      m_since(FindVersion(query.since)),
      m_base(query.base.empty() ? nullptr : &FindType(query.base)) {
    CheckArea(query.area, query.all);
}

std::vector<const Tavik::Type*> TypeFinder::Find() const {
    TypeList found;
    const TypeList types = GetTypes();
    std::copy_if(types.begin(), types.end(), std::back_inserter(found), [this](const Tavik::Type* type) {
        return Accepts(*type);
    });
    const auto key = [](const Tavik::Type* type) {
        const std::string_view name = type->GetName();
        const bool isOther = !name.starts_with(kOwnNamespace);
        std::string area = GetArea(name);
        const bool isDeeper = area != kRootArea;
        return std::tuple(isOther, isDeeper, std::move(area), name);
    };
    std::sort(found.begin(), found.end(), [&key](const Tavik::Type* a, const Tavik::Type* b) {
        return key(a) < key(b);
    });
    return found;
}

std::vector<std::string> TypeFinder::FindMembersWithWords(const Tavik::Type& type) const {
    std::vector<std::string> names;
    for (const Member& member : GetOwnMembers(type)) {
        const bool has =
            std::any_of(m_query.words.begin(), m_query.words.end(), [&](const std::string& word) {
                return !IsInType(type, word) && IsInMember(member, word);
            });
        if (has) {
            names.emplace_back(member.name);
        }
    }
    return names;
}

std::string TypeFinder::ExplainNothing() const {
    const TypeList types = GetTypes();
    const auto count = [&types](auto accepts) {
        return static_cast<std::size_t>(std::count_if(
            types.begin(), types.end(), [&](const Tavik::Type* type) { return accepts(*type); }));
    };
    std::string text = "no type matches";
    if (m_query.words.empty()) {
        return text;
    }
    if (const auto others = count([this](const Tavik::Type& type) { return HasWords(type); }); others > 0) {
        return text + "; " + Count(others, "type") + (others == 1 ? " has" : " have")
             + " the words but not what the options ask for";
    }
    for (const std::string& word : m_query.words) {
        const auto inTypes = count([&](const Tavik::Type& type) { return IsInType(type, word); });
        const auto inMembers = count([&](const Tavik::Type& type) { return IsInMembers(type, word); });
        text += (&word == &m_query.words.front() ? "; \"" : ", \"") + word + "\" is in ";
        text += inTypes + inMembers == 0 ? "none" : std::to_string(inTypes);
        if (inMembers > 0) {
            text += " and in members of " + std::to_string(inMembers) + " (--members)";
        }
        if (inTypes + inMembers == 0) {
            text += DidYouMean(FindNearWord(word));
        }
    }
    return text;
}

bool TypeFinder::HasFacts(const Tavik::Type& type) const {
    return (m_query.kind.empty() || m_query.kind == GetKindName(type.GetKind())) && type.IsPartOf(m_version)
        && (m_since == nullptr || type.GetVersion() == m_since)
        && (m_base == nullptr || (&type != m_base && type.IsA(m_base)))
        && (m_query.area.empty() || IsInArea(GetArea(type.GetName()), m_query.area));
}

bool TypeFinder::HasWords(const Tavik::Type& type) const {
    return std::all_of(m_query.words.begin(), m_query.words.end(), [&](const std::string& word) {
        return IsInType(type, word) || (m_query.members && IsInMembers(type, word));
    });
}

TypeList TypeFinder::GetTypes() const {
    return m_query.all ? GetAllTypes() : GetOwnTypes();
}

/// The word of a type's name that is near.
std::string TypeFinder::FindNearWord(const std::string& word) const {
    std::vector<std::string> known;
    for (const Tavik::Type* type : GetTypes()) {
        const std::string name = type->GetName();
        known.push_back(name);
        known.push_back(name.substr(name.rfind('.') + 1));
        AppendWords(name, known);
    }
    return Pellum::FindNearName(word, known);
}

std::vector<std::pair<std::string, std::size_t>> CountTypesOfAreas(bool all) {
    std::vector<std::pair<std::string, std::size_t>> areas;
    TypeQuery query;
    query.all = all;
    for (const Tavik::Type* type : TypeFinder(query).Find()) {
        // An area is there also when only deeper ones have types.
        const std::string area = GetArea(type->GetName());
        for (std::size_t dot = area.find('.');; dot = area.find('.', dot + 1)) {
            const std::string outer = area.substr(0, dot);
            auto known = std::find_if(
                areas.begin(), areas.end(), [&outer](const auto& entry) { return entry.first == outer; });
            if (known == areas.end()) {
                known = areas.insert(areas.end(), {outer, 0});
            }
            ++known->second;
            if (dot == std::string::npos) {
                break;
            }
        }
    }
    return areas;
}

} // namespace Tool
