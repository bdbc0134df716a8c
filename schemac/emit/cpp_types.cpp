#include "schemac/emit/cpp_types.h"

#include <vector>

#include "schemac/model/naming.h"

namespace Schemac::Emit {

namespace {

using Model::BuiltinKind;

std::string BuiltinCppType(BuiltinKind builtin) {
    switch (builtin) {
    case BuiltinKind::String: return "std::string";
    case BuiltinKind::Int: return "std::int32_t";
    case BuiltinKind::Long: return "std::int64_t";
    case BuiltinKind::Boolean: return "bool";
    case BuiltinKind::Byte: return "signed char";
    case BuiltinKind::Float: return "float";
    case BuiltinKind::DateTime: return "Pellum::System::DateTime";
    case BuiltinKind::Binary: return "std::vector<std::uint8_t>";
    case BuiltinKind::TypeName: return "Tavik::TypeName";
    case BuiltinKind::PropertyPath: return "Tavik::PropertyPath";
    case BuiltinKind::AnyType: return "Tavik::Any";
    case BuiltinKind::DynamicData: return "Tavik::DynamicData";
    case BuiltinKind::MethodFault: return "Tavik::MethodFault";
    case BuiltinKind::RuntimeFault: return "Tavik::RuntimeFault";
    case BuiltinKind::ManagedObject: return "Tavik::MoRef";
    }
    return {};
}

bool IsPassedByReference(const Model::Type& type) {
    return type.Is(BuiltinKind::String) || type.Is(BuiltinKind::Binary) || type.Is(BuiltinKind::TypeName)
        || type.Is(BuiltinKind::PropertyPath);
}

bool IsValue(const Model::Type& type) {
    return type.IsScalar() || type.AsEnum() != nullptr;
}

std::string CamelCase(const std::string& snake) {
    std::string text;
    for (const std::string& word : Naming::Split(snake, "_")) {
        text += Naming::Capitalised(word);
    }
    return text;
}

} // namespace

Form FormOf(const Model::Property& property) {
    if (property.isArray) {
        return Form::Array;
    }
    if (!IsValue(*property.type)) {
        return Form::Object;
    }
    if (property.isOptional) {
        return Form::Optional;
    }
    return IsPassedByReference(*property.type) ? Form::Text : Form::Value;
}

std::string ElementType(const Model::Property& property) {
    const Model::Type& type = *property.type;
    if (const Model::BuiltinType* builtin = type.AsBuiltin()) {
        return BuiltinCppType(builtin->builtin);
    }
    return type.IsManaged() ? "Tavik::MoRef" : Naming::QualifiedClassName(type);
}

std::string ArrayType(const Model::Property& property) {
    const Model::Type& type = *property.type;
    const std::string element = ElementType(property);
    if (IsValue(type)) {
        return "Tavik::Array<" + element + ">";
    }
    if (type.IsManaged() || type.Is(BuiltinKind::AnyType)) {
        return "Tavik::Array<Pellum::Ref<" + element + ">>";
    }
    return "Tavik::DataArray<" + element + ">";
}

std::string MemberType(const Model::Property& property) {
    switch (FormOf(property)) {
    case Form::Value:
    case Form::Text: return ElementType(property);
    case Form::Optional: return "Pellum::Optional<" + ElementType(property) + ">";
    case Form::Object: return "Pellum::Ref<" + ElementType(property) + ">";
    case Form::Array: return "Pellum::Ref<" + ArrayType(property) + ">";
    }
    return {};
}

std::string ParameterType(const Model::Property& property) {
    switch (FormOf(property)) {
    case Form::Value: return ElementType(property);
    case Form::Text:
    case Form::Optional: return "const " + MemberType(property) + "&";
    case Form::Object: return ElementType(property) + "*";
    case Form::Array: return ArrayType(property) + "*";
    }
    return {};
}

std::string BaseClass(const Model::DataType& type) {
    const Model::BuiltinType* builtin = type.base->AsBuiltin();
    const std::string base =
        builtin != nullptr ? BuiltinCppType(builtin->builtin) : Naming::QualifiedClassName(*type.base);
    return type.AddsOpenContent() ? "Tavik::OpenObject<" + base + ">" : base;
}

std::string RelativeName(const Model::Type& type) {
    return Naming::QualifiedClassName(type).substr(Naming::CppNamespace(type).size() + 2);
}

std::string FlagWord(const Model::Property& property, bool isManaged) {
    std::vector<std::string> bits;
    if (property.isArray) {
        bits.emplace_back("Tavik::kArrayFlag");
    }
    if (property.isOptional) {
        bits.emplace_back("Tavik::kOptionalFlag");
    }
    if (isManaged) {
        bits.emplace_back("Tavik::kManagedFlag");
    }
    if (property.isSecret) {
        bits.emplace_back("Tavik::kSecretFlag");
    }
    return bits.empty() ? "0" : Naming::Join(bits, " | ");
}

std::string TablesNamespace(const std::string& library) {
    return CamelCase(library) + "Tables";
}

std::string ExportMacro(const std::string& library) {
    return Naming::UpperCase(library) + "_API";
}

std::string ImportName(const Model::Type& type) {
    const std::string global = Naming::DescriptorGlobal(type);
    constexpr std::size_t kSuffix = std::string_view("TypeInfo").size();
    return "k" + global.substr(1, global.size() - 1 - kSuffix);
}

std::string QualifiedDescriptor(const Model::Type& type) {
    return (type.IsBuiltin() ? "Tavik" : type.classPath.front()) + "::" + Naming::DescriptorGlobal(type);
}

bool IsImported(const Model::Type& type) {
    return type.IsBuiltin() || type.isImported;
}

} // namespace Schemac::Emit
