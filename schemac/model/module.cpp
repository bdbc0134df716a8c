#include "schemac/model/module.h"

#include "schemac/model/module_builder.h"
#include "schemac/model/naming.h"

#include <algorithm>
#include <unordered_set>

namespace Schemac::Model {

namespace {

struct BuiltinRow {
    BuiltinKind kind;
    std::string_view dottedName;
    std::string_view wireName;
    std::string_view className;
};

/// In the order of BuiltinKind.
constexpr BuiltinRow kBuiltins[] = {
    {BuiltinKind::String, "string", "string", "String"},
    {BuiltinKind::Int, "int", "int", "Int"},
    {BuiltinKind::Long, "long", "long", "Long"},
    {BuiltinKind::Boolean, "boolean", "boolean", "Bool"},
    {BuiltinKind::Byte, "byte", "byte", "Byte"},
    {BuiltinKind::Float, "float", "float", "Float"},
    {BuiltinKind::DateTime, "dateTime", "dateTime", "DateTime"},
    {BuiltinKind::Binary, "binary", "binary", "Binary"},
    {BuiltinKind::TypeName, "typeName", "typeName", "TypeName"},
    {BuiltinKind::PropertyPath, "propertyPath", "propertyPath", "PropertyPath"},
    {BuiltinKind::AnyType, "anyType", "anyType", "Any"},
    {BuiltinKind::DynamicData, "orlin.DynamicData", "DynamicData", "DynamicData"},
    {BuiltinKind::MethodFault, "orlin.MethodFault", "MethodFault", "MethodFault"},
    {BuiltinKind::RuntimeFault, "orlin.RuntimeFault", "RuntimeFault", "RuntimeFault"},
    {BuiltinKind::ManagedObject, "orlin.ManagedObject", "ManagedObject", "ManagedObject"},
};

/// The types in their order, but a base before what derives from it.
template <typename T>
std::vector<const T*> BaseFirst(const std::vector<const T*>& types) {
    const std::unordered_set<const Type*> wanted(types.begin(), types.end());
    std::unordered_set<const Type*> seen;
    std::vector<const T*> sorted;
    for (const T* type : types) {
        std::vector<const T*> chain;
        for (const Type* next = type; next != nullptr && seen.insert(next).second; next = next->Base()) {
            if (wanted.contains(next)) {
                chain.push_back(static_cast<const T*>(next));
            }
        }
        sorted.insert(sorted.end(), chain.rbegin(), chain.rend());
    }
    return sorted;
}

/// Collects types of other libraries in order of first use.
class ImportCollector {
public:
    explicit ImportCollector(std::vector<const Type*>& imported) : m_imported(imported) {}

    void Use(const Type* type) {
        if (type != nullptr && type->isImported && !type->IsBuiltin() && m_seen.insert(type).second) {
            m_imported.push_back(type);
        }
    }

    void Use(const std::vector<Property>& properties) {
        for (const Property& property : properties) {
            Use(property.type);
        }
    }

private:
    std::vector<const Type*>& m_imported;
    std::unordered_set<const Type*> m_seen;
};

} // namespace

Module::Module(std::string library) : m_library(std::move(library)) {}

Module::~Module() = default;

const BuiltinType& Module::Builtin(BuiltinKind builtin) const {
    return *m_builtins.at(static_cast<std::size_t>(builtin));
}

const Type* Module::FindType(std::string_view dottedName) const {
    const auto found = std::find_if(m_ownedTypes.begin(), m_ownedTypes.end(), [&](const auto& type) {
        return type->dottedName == dottedName;
    });
    return found == m_ownedTypes.end() ? nullptr : found->get();
}

ModuleBuilder::ModuleBuilder(std::string library) : m_module(new Module(std::move(library))) {
    Version& base = AddVersion();
    base.fullName = kRuntimeBaseVersion;
    base.name = "version0";
    base.nameSpace = "orlin";
    base.isImported = true;
    for (const BuiltinRow& row : kBuiltins) {
        BuiltinType& type = AddType<BuiltinType>(row.kind);
        type.name = Naming::Split(row.dottedName, ".").back();
        type.dottedName = row.dottedName;
        type.wireName = row.wireName;
        type.classPath = {"Tavik", std::string(row.className)};
        type.version = &base;
        type.isImported = true;
        m_module->m_builtins.push_back(&type);
    }
}

Version& ModuleBuilder::AddVersion() {
    return *m_module->m_ownedVersions.emplace_back(std::make_unique<Version>());
}

SourceFile& ModuleBuilder::AddFile() {
    return *m_module->m_ownedFiles.emplace_back(std::make_unique<SourceFile>());
}

std::unique_ptr<const Module> ModuleBuilder::Finish() {
    Module& module = *m_module;
    const bool hasEnumOrder = !module.m_enumTypes.empty();
    ImportCollector imports(module.m_importedTypes);
    for (const std::unique_ptr<Type>& type : module.m_ownedTypes) {
        type->nested = BaseFirst(type->nested);
        if (type->isImported) {
            if (const DataType* data = type->AsData()) {
                module.m_importedDataTypes.push_back(data);
            }
            continue;
        }
        imports.Use(type->Base());
        if (const DataType* data = type->AsData()) {
            module.m_dataTypes.push_back(data);
            imports.Use(data->properties);
        } else if (const ManagedType* managed = type->AsManaged()) {
            module.m_managedTypes.push_back(managed);
            imports.Use(managed->properties);
            for (const Method& method : managed->methods) {
                imports.Use(method.parameters);
                imports.Use(method.result.type);
                std::for_each(method.faults.begin(), method.faults.end(), [&](const Type* fault) {
                    imports.Use(fault);
                });
            }
        } else if (const EnumType* enumeration = hasEnumOrder ? nullptr : type->AsEnum()) {
            module.m_enumTypes.push_back(enumeration);
        }
    }
    module.m_dataTypes = BaseFirst(module.m_dataTypes);
    module.m_managedTypes = BaseFirst(module.m_managedTypes);
    for (const std::unique_ptr<Version>& version : module.m_ownedVersions) {
        if (!version->isImported) {
            module.m_versions.push_back(version.get());
        }
    }
    for (const std::unique_ptr<SourceFile>& file : module.m_ownedFiles) {
        if (!file->isImported) {
            module.m_files.push_back(file.get());
        }
    }
    return std::unique_ptr<const Module>(std::move(m_module));
}

} // namespace Schemac::Model
