#include "tools/morvane/model/lookup.h"

#include "pellum/error/exception.h"
#include "pellum/text/near_name.h"
#include "tavik/type/type_registry.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/words.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace Tool {

namespace {

using TypeList = std::vector<const Tavik::Type*>;

constexpr std::size_t kMostCandidates = 12;

/// A class name as a dotted one: "::Morvane::Event::Event" gives "Morvane.Event.Event".
std::string ReplaceColons(const std::string& name) {
    std::string dotted;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name.compare(i, 2, "::") == 0) {
            dotted += i == 0 ? "" : ".";
            ++i;
        } else {
            dotted += name[i];
        }
    }
    return dotted;
}

/// Whether `name` is all of `full` or the end of it from a dot on.
bool IsLastPartOf(const std::string& full, const std::string& name) {
    return full.ends_with(name) && (full.size() == name.size() || full[full.size() - name.size() - 1] == '.');
}

const Tavik::Type* FindExactly(const std::string& name) {
    auto& registry = Tavik::TypeRegistry::Instance();
    for (const std::string& candidate : {name, std::string(kOwnNamespace) + '.' + name}) {
        if (const Tavik::Type* type = registry.FindByName(candidate)) {
            return type;
        }
    }
    return registry.FindByWireName(name);
}

/// All types that a name may mean: what fits exactly, or else in case as well, or else in any case.
TypeList FindCandidates(const std::string& name) {
    const std::string dotted = ReplaceColons(name);
    if (dotted.empty()) {
        return {};
    }
    for (const std::string& form : {name, dotted}) {
        if (const Tavik::Type* type = FindExactly(form)) {
            return {type};
        }
    }
    const std::string lower = ToLower(dotted);
    TypeList whole;
    TypeList inCase;
    TypeList inAnyCase;
    for (const Tavik::Type* type : GetAllTypes()) {
        const std::string full = type->GetName();
        const std::string lowerFull = ToLower(full);
        if (lowerFull == lower || lowerFull == std::string(kOwnNamespace) + '.' + lower
            || ToLower(type->GetWireName()) == lower) {
            whole.push_back(type);
        } else if (IsLastPartOf(full, dotted)) {
            inCase.push_back(type);
        } else if (IsLastPartOf(lowerFull, lower)) {
            inAnyCase.push_back(type);
        }
    }
    return !whole.empty() ? whole : !inCase.empty() ? inCase : inAnyCase;
}

std::vector<std::string> GetNames(const TypeList& types) {
    std::vector<std::string> names(types.size());
    std::transform(
        types.begin(), types.end(), names.begin(), [](const Tavik::Type* type) { return type->GetName(); });
    return names;
}

std::string GetMemberName(const Member& member) {
    return std::string(member.owner->GetName()) + '.' + member.name;
}

std::vector<std::string> GetNames(const std::vector<Member>& members) {
    std::vector<std::string> names(members.size());
    std::transform(members.begin(), members.end(), names.begin(), &GetMemberName);
    return names;
}

[[noreturn]] void FailAmbiguous(const std::string& name, const std::vector<std::string>& candidates) {
    throw Pellum::Exception('"' + name + "\" may be " + ListSome(candidates, kMostCandidates));
}

/// The dotted name of the type whose own name, with or without those of the types around it, is near.
std::string FindNearType(const std::string& name) {
    std::map<std::string, std::string> fullNames;
    for (const std::string& known : Tavik::TypeRegistry::Instance().GetNames()) {
        for (std::size_t dot = known.find('.'); dot != std::string::npos; dot = known.find('.', dot + 1)) {
            fullNames.emplace(known.substr(dot + 1), known);
        }
        fullNames[known] = known;
    }
    std::vector<std::string> candidates;
    candidates.reserve(fullNames.size());
    for (const auto& [shortName, fullName] : fullNames) {
        candidates.push_back(shortName);
    }
    const std::string near = Pellum::FindNearName(ReplaceColons(name), candidates);
    return near.empty() ? near : fullNames[near];
}

/// The types that have the name somewhere in theirs, where those are few enough to be told.
std::string ListTypesWith(const std::string& name) {
    TypeList types = GetAllTypes();
    std::erase_if(types, [&name](const Tavik::Type* type) {
        return !ContainsWord(type->GetName(), name) && !ContainsWord(type->GetWireName(), name);
    });
    return types.empty() || types.size() > kMostCandidates || name.empty()
             ? "; \"morvane types\" lists them, and takes words to look for"
             : "; it is in the name of " + ListSome(GetNames(types), kMostCandidates);
}

[[noreturn]] void FailUnknown(const std::string& name) {
    const std::string near = FindNearType(name);
    throw Pellum::Exception(
        "there is no type \"" + name + '"' + (near.empty() ? ListTypesWith(name) : DidYouMean(near)));
}

/// Members of any type that are called `name`, or whose wire name that is, in any case.
std::vector<Member> FindMembers(const std::string& name) {
    const std::string lower = ToLower(name);
    std::vector<Member> found;
    for (const Tavik::Type* type : GetAllTypes()) {
        for (const Member& member : GetOwnMembers(*type)) {
            if (ToLower(member.name) == lower
                || (member.method != nullptr && ToLower(member.method->wireName) == lower)) {
                found.push_back(member);
            }
        }
    }
    return found;
}

/// The member of "TYPE.member", where TYPE is a type's name; throws when the type does not have it.
std::optional<Subject> FindMemberOfType(const std::string& name) {
    const std::string dotted = ReplaceColons(name);
    const std::size_t dot = dotted.rfind('.');
    if (dot == std::string::npos) {
        return {};
    }
    const std::string memberName = dotted.substr(dot + 1);
    const TypeList types = FindCandidates(dotted.substr(0, dot));
    std::vector<Subject> found;
    std::vector<std::string> known;
    for (const Tavik::Type* type : types) {
        for (const Tavik::Type* owner : GetLine(*type)) {
            for (const Member& member : GetOwnMembers(*owner)) {
                known.emplace_back(member.name);
                if (ToLower(member.name) == ToLower(memberName)) {
                    found.push_back({type, member});
                }
            }
        }
    }
    if (found.size() > 1) {
        std::vector<std::string> names(found.size());
        std::transform(found.begin(), found.end(), names.begin(), [](const Subject& subject) {
            return std::string(subject.type->GetName()) + '.' + subject.member->name;
        });
        FailAmbiguous(name, names);
    }
    if (found.empty() && types.size() == 1) {
        const std::string near = Pellum::FindNearName(memberName, known);
        if (!near.empty() || FindNearType(name).empty()) {
            throw Pellum::Exception(
                std::string(types.front()->GetName()) + " has no member \"" + memberName + '"'
                + DidYouMean(near));
        }
    }
    return found.empty() ? std::nullopt : std::optional(found.front());
}

} // namespace

const Tavik::Type& FindType(const std::string& name) {
    const TypeList candidates = FindCandidates(name);
    if (candidates.empty()) {
        FailUnknown(name);
    }
    if (candidates.size() > 1) {
        FailAmbiguous(name, GetNames(candidates));
    }
    return *candidates.front();
}

const Tavik::DataObjectType& FindDataType(const std::string& name) {
    const Tavik::Type& type = FindType(name);
    const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&type);
    if (dataType == nullptr) {
        throw Pellum::Exception(
            std::string(type.GetName()) + " is a type of kind " + GetKindName(type.GetKind())
            + ", expected a data or fault type");
    }
    return *dataType;
}

Subject FindSubject(const std::string& name) {
    if (!FindCandidates(name).empty()) {
        return {&FindType(name), {}};
    }
    if (const auto subject = FindMemberOfType(name)) {
        return *subject;
    }
    const std::vector<Member> members = FindMembers(name);
    std::vector<Member> methods = members;
    std::erase_if(methods, [](const Member& member) { return member.method == nullptr; });
    if (methods.size() == 1) {
        return {methods.front().owner, methods.front()};
    }
    if (!members.empty()) {
        throw Pellum::Exception(
            "there is no type \"" + name + "\"; called so are "
            + ListSome(GetNames(methods.empty() ? members : methods), kMostCandidates));
    }
    FailUnknown(name);
}

} // namespace Tool
