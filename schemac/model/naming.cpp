#include "schemac/model/naming.h"

#include "schemac/model/module.h"

#include <algorithm>
#include <filesystem>

namespace Schemac::Naming {

namespace {

// ASCII only and free of the locale: schema names hold nothing else.
bool IsUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

bool IsLower(char c) {
    return c >= 'a' && c <= 'z';
}

char ToUpper(char c) {
    return IsLower(c) ? static_cast<char>(c - 'a' + 'A') : c;
}

char ToLower(char c) {
    return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Sorted.
constexpr std::string_view kKeywords[] = {
    "alignas",     "alignof",  "and",        "and_eq",    "asm",       "auto",         "bitand",
    "bitor",       "bool",     "break",      "case",      "catch",     "char",         "char16_t",
    "char32_t",    "char8_t",  "class",      "co_await",  "co_return", "co_yield",     "compl",
    "concept",     "const",    "const_cast", "consteval", "constexpr", "constinit",    "continue",
    "decltype",    "default",  "delete",     "do",        "double",    "dynamic_cast", "else",
    "enum",        "explicit", "export",     "extern",    "false",     "float",        "for",
    "friend",      "goto",     "if",         "inline",    "int",       "long",         "mutable",
    "namespace",   "new",      "noexcept",   "not",       "not_eq",    "nullptr",      "operator",
    "or",          "or_eq",    "private",    "protected", "public",    "register",     "reinterpret_cast",
    "requires",    "return",   "short",      "signed",    "sizeof",    "static",       "static_assert",
    "static_cast", "struct",   "switch",     "template",  "this",      "thread_local", "throw",
    "true",        "try",      "typedef",    "typeid",    "typename",  "union",        "unsigned",
    "using",       "virtual",  "void",       "volatile",  "wchar_t",   "while",        "xor",
    "xor_eq",
};
static_assert(std::is_sorted(std::begin(kKeywords), std::end(kKeywords)));

/// What every generated class inherits from the runtime, or has as a fault.
constexpr std::string_view kInheritedMembers[] = {
    "CreateException", "DecRef", "Exception",     "GetHttpMapping", "GetRefCount",
    "IncRef",          "Throw",  "ThrowInternal", "ToString",
};

constexpr std::string_view kException = "Exception";

/// Member functions that every fault has.
constexpr std::string_view kFaultMembers[] = {"CreateException", "GetHttpMapping", "Throw", "ThrowInternal"};
/// What objects behind an interface have, stubs and servers' own alike.
constexpr std::string_view kObjectMembers[] = {"IsUnregistered", "TryIncRef"};

template <class Names>
bool Contains(const Names& names, std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

std::string FreeMember(std::string name, const Model::Type& owner) {
    const std::string& simple = owner.classPath.back();
    const bool isTaken = name == simple || Contains(kInheritedMembers, name)
                      || (owner.IsManaged() && (name == simple + "Stub" || Contains(kObjectMembers, name)));
    if (isTaken) {
        name += '_';
    }
    return name;
}

std::string_view Prefix(Accessor accessor) {
    switch (accessor) {
    case Accessor::Get: return "Get";
    case Accessor::Is: return "Is";
    case Accessor::GetPtr: return "GetPtr";
    case Accessor::Peek: return "Peek";
    case Accessor::IsSet: return "IsSet";
    case Accessor::Set: return "Set";
    case Accessor::Swap: return "Swap";
    case Accessor::Unset: return "Unset";
    }
    return {};
}

} // namespace

std::string Capitalised(std::string_view name) {
    std::string result(name);
    if (!result.empty()) {
        result.front() = ToUpper(result.front());
    }
    return result;
}

std::string UpperCase(std::string_view name) {
    std::string result(name);
    std::transform(result.begin(), result.end(), result.begin(), ToUpper);
    return result;
}

std::string SnakeCase(std::string_view name) {
    std::string result;
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (at > 0 && IsUpper(name[at])) {
            const bool nextIsLower = at + 1 < name.size() && IsLower(name[at + 1]);
            if (IsLower(name[at - 1]) || (nextIsLower && name[at - 1] != '_')) {
                result += '_';
            }
        }
        result += ToLower(name[at]);
    }
    return result;
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + separator.size());
    }
}

std::string Join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string text;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        text += index == 0 ? std::string_view() : separator;
        text += parts[index];
    }
    return text;
}

std::vector<std::string> ClassPath(std::string_view dottedName) {
    std::vector<std::string> path = Split(dottedName, ".");
    std::transform(
        path.begin(), path.end(), path.begin(), [](const std::string& part) { return Capitalised(part); });
    return path;
}

std::string QualifiedClassName(const Model::Type& type) {
    return Join(type.classPath, "::");
}

std::string CppNamespace(const Model::Type& type) {
    std::vector<std::string> path = type.TopLevel().classPath;
    path.pop_back();
    return Join(path, "::");
}

std::string Escaped(std::string_view name) {
    return std::string(name) + (IsCppKeyword(name) ? "_" : "");
}

std::string ParameterName(std::string_view name) {
    return Escaped(name);
}

std::string MemberName(std::string_view property) {
    return "m_" + std::string(property);
}

std::string Enumerator(std::string_view tag) {
    return Escaped(tag);
}

std::string TagConstant(const Model::EnumType& type, std::string_view tag) {
    return UpperCase(type.name) + "_" + UpperCase(tag);
}

std::string MethodConstant(std::string_view method) {
    return "METHOD_" + UpperCase(method);
}

std::string MethodFunction(std::string_view method, const Model::Type& owner) {
    return FreeMember(Capitalised(method), owner);
}

std::string ExceptionClass(const Model::Type& fault) {
    const bool isTaken = !fault.classPath.empty() && fault.classPath.back() == kException;
    return std::string(kException) + (isTaken ? "_" : "");
}

std::string ExceptionParameter(std::string_view property) {
    return property == "exception" ? "exception_" : ParameterName(property);
}

bool IsFaultMember(std::string_view name) {
    return std::find(std::begin(kFaultMembers), std::end(kFaultMembers), name) != std::end(kFaultMembers);
}

std::vector<Accessor> AccessorsOf(const Model::Property& property, const Model::Type& owner) {
    using enum Accessor;
    if (owner.IsManaged()) {
        return {Get};
    }
    if (property.isArray) {
        return {Get, GetPtr, Peek, IsSet, Set, Swap};
    }
    const bool isValue = property.type->IsScalar() || property.type->AsEnum() != nullptr;
    std::vector<Accessor> accessors{
        property.type->Is(Model::BuiltinKind::Boolean) ? Is : Get, Peek, Set, Swap};
    if (isValue && property.isOptional) {
        accessors.push_back(Unset);
    }
    return accessors;
}

std::string AccessorName(Accessor accessor, std::string_view property, const Model::Type& owner) {
    return FreeMember(std::string(Prefix(accessor)) + Capitalised(property), owner);
}

std::string StubClass(const Model::Type& type) {
    return type.IsBuiltin() ? "Tavik::StubImpl" : QualifiedClassName(type) + "Stub";
}

std::string PathStem(const std::string& path) {
    return std::filesystem::path(path).replace_extension().generic_string();
}

std::string StubHeaderPath(const Model::Type& type) {
    const std::string path = HeaderPath(type);
    return path.empty() ? path : PathStem(path) + "_stub.h";
}

std::string DescriptorGlobal(const Model::Type& type) {
    std::string path;
    if (type.IsScalar() || type.Is(Model::BuiltinKind::AnyType)) {
        path = type.classPath.back();
    } else {
        path = Join(ClassPath(type.dottedName), "");
    }
    return "g" + path + "TypeInfo";
}

std::string MethodObjectsGlobal(const Model::ManagedType& type) {
    return "g" + Join(ClassPath(type.dottedName), "") + "MethodObjects";
}

std::string DefaultMethodWireName(std::string_view nameSpace, std::string_view method) {
    return Capitalised(Split(nameSpace, ".").front()) + Capitalised(method);
}

std::string HeaderPath(const Model::Type& type) {
    const Model::Type& topLevel = type.TopLevel();
    if (topLevel.file == nullptr) {
        return {};
    }
    const std::string& path = topLevel.file->path;
    return path.substr(0, path.rfind('/') + 1) + SnakeCase(topLevel.name) + ".h";
}

std::string ProtoField(std::string_view name) {
    return SnakeCase(name);
}

std::string ProtoJsonName(std::string_view field) {
    std::string name;
    bool raises = false;
    for (const char c : field) {
        if (c != '_') {
            name += raises ? ToUpper(c) : c;
        }
        raises = c == '_';
    }
    return name;
}

std::string ProtoEnumValue(const Model::EnumType& type, std::string_view tag) {
    return UpperCase(SnakeCase(type.wireName) + "_" + SnakeCase(tag));
}

std::string ProtoChoice(const Model::Type& type) {
    return type.wireName + "OrDerived";
}

bool IsCppKeyword(std::string_view word) {
    return std::binary_search(std::begin(kKeywords), std::end(kKeywords), word);
}

} // namespace Schemac::Naming
