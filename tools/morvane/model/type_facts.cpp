#include "tools/morvane/model/type_facts.h"

#include "tavik/type/type_registry.h"
#include "tools/morvane/generated_headers.h"
#include "tools/morvane/model/library.h"
#include "types/documentation.h"

#include <algorithm>
#include <cstring>

namespace Tool {

namespace {

bool IsUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

char ToLower(char c) {
    return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The part of a dotted name from `position` to the next dot.
std::string_view GetPart(std::string_view name, std::size_t position) {
    return name.substr(position, name.find('.', position) - position);
}

/// A name in the form in which those of classes and of their headers are alike: no underscores, lower case.
std::string Fold(std::string_view name) {
    std::string folded;
    for (const char c : name) {
        if (c != '_') {
            folded += ToLower(c);
        }
    }
    return folded;
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

std::string GetHeaderPath(std::string_view dottedName) {
    // Nested classes stand in the header of the outermost one, which is the first part in upper case.
    std::size_t position = 0;
    while (position < dottedName.size() && !IsUpper(dottedName[position])) {
        position += GetPart(dottedName, position).size() + 1;
    }
    if (position >= dottedName.size()) {
        return {};
    }
    const std::string wanted = Fold(GetPart(dottedName, position));
    const std::string_view library = GetPart(dottedName, 0);
    std::string found;
    for (const std::string_view path : kGeneratedHeaders) {
        const std::size_t slash = path.rfind('/') + 1;
        const bool isOwnLibrary = (path.substr(0, path.find('/')) == "types") == (library == kOwnNamespace);
        if (isOwnLibrary && Fold(path.substr(slash, path.rfind('.') - slash)) == wanted) {
            // Of two classes with one name, the one whose folder the type's name mentions.
            const std::string folder = '/' + std::string(GetArea(dottedName)) + '/';
            if (found.empty() || path.find(folder) != std::string_view::npos) {
                found = path;
            }
        }
    }
    return found;
}

std::string_view GetArea(std::string_view dottedName) {
    const std::size_t dot = dottedName.find('.');
    if (dot == std::string_view::npos || IsUpper(dottedName[dot + 1])) {
        return {};
    }
    return GetPart(dottedName, dot + 1);
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

std::size_t CountProperties(const Tavik::DataObjectType& type, const Tavik::Version* version) {
    const auto& properties = type.GetProperties();
    return static_cast<std::size_t>(
        std::count_if(properties.begin(), properties.end(), [version](const Tavik::Property* property) {
            return property->IsPartOf(version);
        }));
}

const char* FindDocumentation(std::string_view type, const char* member) {
    for (const Tavik::Documentation& entry : TypesTables::GetDocumentation()) {
        const bool isMember = member == nullptr
                                ? entry.member == nullptr
                                : entry.member != nullptr && std::strcmp(entry.member, member) == 0;
        if (isMember && type == entry.type) {
            return entry.text;
        }
    }
    return nullptr;
}

std::vector<const Tavik::Type*> GetAllTypes() {
    std::vector<const Tavik::Type*> types;
    for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        AppendTypes(library, types);
    }
    return types;
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
