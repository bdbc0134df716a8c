#include "tools/morvane/model/type_facts.h"

#include "tavik/type/type_registry.h"
#include "tools/morvane/generated_headers.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/words.h"

#include <algorithm>

namespace Tool {

namespace {

bool IsUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

/// The position of the name of the outermost type in a dotted name: the first part in upper case.
std::size_t FindTypePart(std::string_view name) {
    std::size_t position = 0;
    while (position < name.size() && !IsUpper(name[position])) {
        position = std::min(name.find('.', position), name.size() - 1) + 1;
    }
    return position;
}

void AppendTypes(const Tavik::LoadedLibrary& library, std::vector<const Tavik::Type*>& types) {
    for (const Tavik::Type* type : library.types) {
        if (type != nullptr) {
            types.push_back(type);
        }
    }
}

} // namespace

const char* GetKindName(Tavik::TypeKind kind) {
    switch (kind) {
    case Tavik::TypeKind::Data: return "data";
    case Tavik::TypeKind::Fault: return "fault";
    case Tavik::TypeKind::Enum: return "enum";
    case Tavik::TypeKind::Managed: return "managed";
    default: return "built-in";
    }
}

std::string GetClassName(std::string_view dottedName) {
    std::string name;
    bool startsPart = true;
    for (const char c : dottedName) {
        if (c == '.') {
            name += "::";
        } else {
            name += startsPart && c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        }
        startsPart = c == '.';
    }
    return name;
}

std::string GetHeaderPath(const Tavik::Type& type) {
    const std::string_view wireName = type.GetWireName();
    for (const GeneratedHeader& header : kGeneratedHeaders) {
        if (header.wireName == wireName) {
            return std::string(header.path);
        }
    }
    return {};
}

std::string GetStubHeaderPath(const Tavik::Type& type) {
    const std::string path = type.GetKind() == Tavik::TypeKind::Managed ? GetHeaderPath(type) : std::string();
    return path.empty() ? path : path.substr(0, path.rfind('.')) + "_stub.h";
}

std::string GetArea(std::string_view dottedName) {
    std::string_view area = dottedName.substr(0, FindTypePart(dottedName));
    area = area.substr(0, area.rfind('.'));
    if (area == kOwnNamespace) {
        return std::string(kRootArea);
    }
    if (area.starts_with(kOwnNamespace) && area[kOwnNamespace.size()] == '.') {
        area.remove_prefix(kOwnNamespace.size() + 1);
    }
    return std::string(area);
}

bool IsInArea(std::string_view area, std::string_view wanted) {
    return ToLower(area.substr(0, wanted.size())) == ToLower(wanted)
        && (area.size() == wanted.size() || area[wanted.size()] == '.');
}

std::string GetShortName(const Tavik::Version* version) {
    if (version == nullptr) {
        return "-";
    }
    const std::string& name = version->GetName();
    return version->GetLabel().empty() ? name.substr(name.rfind('.') + 1) : version->GetLabel();
}

std::string GetFullName(const Tavik::Version* version) {
    if (version == nullptr) {
        return "every version";
    }
    return version->GetLabel().empty() ? version->GetName()
                                       : version->GetLabel() + " (" + version->GetName() + ')';
}

std::string GetTypeText(const Tavik::PropertyDescriptor& descriptor) {
    return std::string(descriptor.type->name) + (descriptor.IsArray() ? "[]" : "");
}

std::string GetFlagsText(const Tavik::PropertyDescriptor& descriptor) {
    std::string text = descriptor.IsOptional() ? "optional" : "";
    if (descriptor.IsSecret()) {
        text += text.empty() ? "secret" : ", secret";
    }
    return text;
}

std::string GetShortVersion(const char* name) {
    return name == nullptr ? "-" : GetShortName(Tavik::TypeRegistry::Instance().FindVersion(name));
}

std::vector<const Tavik::Type*> GetAllTypes() {
    std::vector<const Tavik::Type*> types;
    for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        AppendTypes(library, types);
    }
    return types;
}

bool IsBuiltIn(const Tavik::Type& type) {
    const auto types = GetAllTypes();
    return std::find(types.begin(), types.end(), &type) == types.end();
}

std::vector<const Tavik::Type*> GetOwnTypes() {
    std::vector<const Tavik::Type*> types;
    AppendTypes(GetOwnLibrary(), types);
    return types;
}

std::vector<const Tavik::Type*> GetDerivedTypes(const Tavik::Type& base) {
    std::vector<const Tavik::Type*> derived;
    for (const Tavik::Type* type : GetAllTypes()) {
        if (type != &base && type->IsA(&base)) {
            derived.push_back(type);
        }
    }
    return derived;
}

} // namespace Tool
