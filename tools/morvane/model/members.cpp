#include "tools/morvane/model/members.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"

namespace Tool {

const char* Member::GetVersionName() const {
    return property != nullptr ? property->version
         : method != nullptr   ? method->version
                               : owner->GetInfo().version;
}

const char* GetMemberKindName(MemberKind kind) {
    switch (kind) {
    case MemberKind::Property: return "property";
    case MemberKind::Method: return "method";
    case MemberKind::Value: break;
    }
    return "value";
}

std::vector<Member> GetOwnMembers(const Tavik::Type& type) {
    std::vector<Member> members;
    const auto addProperty = [&](const Tavik::PropertyDescriptor& property) {
        members.push_back({&type, MemberKind::Property, property.name, &property, nullptr});
    };
    if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&type)) {
        for (const Tavik::Property& property : dataType->GetOwnProperties()) {
            addProperty(property.GetDescriptor());
        }
    } else if (const auto* enumType = dynamic_cast<const Tavik::EnumType*>(&type)) {
        for (const char* tag : enumType->GetTags()) {
            members.push_back({&type, MemberKind::Value, tag, nullptr, nullptr});
        }
    } else if (const auto* managedType = dynamic_cast<const Tavik::ManagedObjectType*>(&type)) {
        for (const auto& member : managedType->GetMethodObjects()) {
            if (member->IsPropertyGetter()) {
                addProperty(*member->GetPropertyDescriptor());
            } else {
                const Tavik::MethodDescriptor* method = member->GetMethodDescriptor();
                members.push_back({&type, MemberKind::Method, method->name, nullptr, method});
            }
        }
    }
    return members;
}

std::vector<const Tavik::Type*> GetLine(const Tavik::Type& type) {
    std::vector<const Tavik::Type*> line;
    for (const Tavik::Type* base = &type; base != nullptr; base = base->GetBaseType()) {
        line.push_back(base);
    }
    return line;
}

} // namespace Tool
