#include "tools/morvane/model/usages.h"

#include "tools/morvane/model/type_facts.h"

#include <array>

namespace Tool {

namespace {

constexpr std::array<const char*, 4> kRoles = {"property", "parameter", "result", "fault"};

void AppendUsages(const Tavik::Type& named, const Member& member, std::vector<std::vector<Usage>>& byRole) {
    const auto isMeant = [&](const Tavik::TypeInfo* info) {
        return info != nullptr && Tavik::MayBeSameType(*info, named.GetInfo());
    };
    const std::string place = std::string(member.owner->GetName()) + '.' + member.name;
    const auto add = [&](std::size_t role, const std::string& detail = {}) {
        byRole[role].push_back({member, kRoles.at(role), place + detail, &named});
    };
    if (member.property != nullptr && isMeant(member.property->type)) {
        add(0);
    }
    if (member.method == nullptr) {
        return;
    }
    for (const auto* parameter = member.method->parameters; parameter->name != nullptr; ++parameter) {
        if (isMeant(parameter->type)) {
            add(1, '(' + std::string(parameter->name) + ')');
        }
    }
    if (isMeant(member.method->result.type)) {
        add(2);
    }
    for (const auto* fault = member.method->faults; *fault != nullptr; ++fault) {
        if (isMeant(*fault)) {
            add(3);
        }
    }
}

} // namespace

std::vector<Usage> FindUsages(const Tavik::Type& type) {
    std::vector<Member> members;
    for (const Tavik::Type* owner : GetAllTypes()) {
        const auto own = GetOwnMembers(*owner);
        members.insert(members.end(), own.begin(), own.end());
    }
    std::vector<Usage> usages;
    for (const Tavik::Type* named : GetLine(type)) {
        if (named != &type && named->GetBaseType() == nullptr) {
            break; // anything can stand where a root is named
        }
        std::vector<std::vector<Usage>> byRole(kRoles.size());
        for (const Member& member : members) {
            AppendUsages(*named, member, byRole);
        }
        for (std::vector<Usage>& some : byRole) {
            usages.insert(usages.end(), some.begin(), some.end());
        }
    }
    return usages;
}

} // namespace Tool
