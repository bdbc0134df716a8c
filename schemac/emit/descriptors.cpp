#include "schemac/emit/descriptors.h"

#include "schemac/emit/cpp_types.h"
#include "schemac/emit/template.h"
#include "schemac/model/naming.h"

namespace Schemac::Emit {

namespace {

std::string TableName(const Model::Type& type, std::string_view suffix) {
    return "g" + Naming::Join(Naming::ClassPath(type.dottedName), "") + std::string(suffix);
}

/// Reference to a descriptor from constant data: null when it lives in another library, with the row that
/// start-up needs to store it in `field` appended to `imports`.
std::string Reference(const Model::Type* type, const std::string& field, std::string& imports) {
    if (type == nullptr) {
        return "nullptr";
    }
    if (!IsImported(*type)) {
        return "&" + QualifiedDescriptor(*type);
    }
    imports += "{&" + field + ", " + ImportName(*type) + "},\n";
    return "nullptr";
}

std::string Row(
    const Model::Property& property, bool isManaged, const std::string& field, std::string& imports) {
    const std::string type = Reference(property.type, field, imports);
    return "{" + type + ", " + FlagWord(property, isManaged) + ", \"" + property.name + "\", 0, \""
         + property.version->fullName + "\"}";
}

/// Tables stand in the type's root namespace, like the descriptors.
std::string Qualified(const Model::Type& type, const std::string& table) {
    return type.classPath.front() + "::" + table;
}

std::string RowsTable(
    const Model::Type& owner, const std::string& table, const std::vector<Model::Property>& properties,
    bool isManaged, std::string& imports) {
    std::string rows;
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const std::string field = Qualified(owner, table) + "[" + std::to_string(i) + "].type";
        rows += "    " + Row(properties[i], isManaged, field, imports) + ",\n";
    }
    return "constinit Tavik::PropertyDescriptor " + table + "[] = {\n" + rows + "    {},\n};\n";
}

std::string InRoot(const Model::Type& type, const std::string& text) {
    const std::string& root = type.classPath.front();
    return "namespace " + root + " {\n" + text + "} // namespace " + root + "\n";
}

} // namespace

std::string KindName(const Model::Type& type) {
    switch (type.kind) {
    case Model::TypeKind::Data: return "Tavik::TypeKind::Data";
    case Model::TypeKind::Fault: return "Tavik::TypeKind::Fault";
    case Model::TypeKind::Enum: return "Tavik::TypeKind::Enum";
    case Model::TypeKind::Managed: return "Tavik::TypeKind::Managed";
    case Model::TypeKind::Builtin: break;
    }
    return {};
}

std::string PropertiesName(const Model::Type& type) {
    return TableName(type, "Properties");
}

std::string FieldTableName(const Model::Type& type) {
    return "g" + Naming::Join(Naming::ClassPath(type.dottedName), "") + "Fields";
}

std::string_view PropertiesKind(const Model::DataType& type) {
    const bool hasOptional =
        std::any_of(type.properties.begin(), type.properties.end(), [](const Model::Property& property) {
            return property.isOptional;
        });
    return type.properties.empty() ? "None" : hasOptional ? "WithOptional" : "Required";
}

std::string MethodsName(const Model::Type& type) {
    return TableName(type, "Methods");
}

std::string ImportListName(const Model::SourceFile& file) {
    std::string name = Naming::PathStem(file.path);
    for (char& c : name) {
        c = c == '/' || c == '-' || c == '.' ? '_' : c;
    }
    return name + "_imports";
}

const std::vector<Model::Property>& PropertiesOf(const Model::Type& type) {
    static const std::vector<Model::Property> none;
    if (const Model::DataType* data = type.AsData()) {
        return data->properties;
    }
    const Model::ManagedType* managed = type.AsManaged();
    return managed != nullptr ? managed->properties : none;
}

std::size_t MethodObjectCount(const Model::ManagedType& type) {
    return type.methods.size() + type.properties.size();
}

std::string MethodObjectsArray(const Model::ManagedType& type) {
    const std::size_t count = MethodObjectCount(type);
    return count == 0 ? ""
                      : "Tavik::ManagedMethod* " + Naming::MethodObjectsGlobal(type) + "["
                            + std::to_string(count) + "]";
}

void ForEachMethodType(const Model::Type& type, const std::function<void(const Model::Type*)>& visit) {
    const Model::ManagedType* managed = type.AsManaged();
    if (managed == nullptr) {
        return;
    }
    for (const Model::Method& method : managed->methods) {
        visit(method.result.type);
        for (const Model::Property& parameter : method.parameters) {
            visit(parameter.type);
        }
        for (const Model::Type* fault : method.faults) {
            visit(fault);
        }
    }
}

std::string PropertyTable(
    const Model::Type& owner, const std::string& table, const std::vector<Model::Property>& properties,
    bool isManaged, std::string& imports) {
    // Declared first, as a definition that other sources refer to.
    return InRoot(
        owner, "extern Tavik::PropertyDescriptor " + table + "[];\n"
                   + RowsTable(owner, table, properties, isManaged, imports));
}

std::string MethodTable(const Model::ManagedType& type, std::string& imports) {
    const std::string table = MethodsName(type);
    std::string parts;
    std::string rows;
    for (std::size_t i = 0; i < type.methods.size(); ++i) {
        const Model::Method& method = type.methods[i];
        const std::string prefix = table + std::to_string(i);
        parts += "static " + RowsTable(type, prefix + "Parameters", method.parameters, false, imports);
        std::string faults;
        for (std::size_t k = 0; k < method.faults.size(); ++k) {
            const std::string field = Qualified(type, prefix + "Faults") + "[" + std::to_string(k) + "]";
            faults += Reference(method.faults[k], field, imports) + ", ";
        }
        parts +=
            "static constinit const Tavik::TypeInfo* " + prefix + "Faults[] = {" + faults + "nullptr};\n";
        const std::string resultField = Qualified(type, table) + "[" + std::to_string(i) + "].result.type";
        rows += "    {\"" + method.name + "\", \"" + method.wireName + "\", "
              + (method.privilege.empty() ? "nullptr" : "\"" + method.privilege + "\"") + ", 0,\n     {"
              + Reference(method.result.type, resultField, imports) + ", " + FlagWord(method.result, false)
              + ", \"result\", 0, \"" + method.result.version->fullName + "\"},\n     " + prefix
              + "Parameters, " + prefix + "Faults, \"" + method.version->fullName + "\", 0, 0, "
              + (method.isLongRunning ? "1" : "0") + ", " + (method.carriesCredentials ? "1" : "0")
              + ", 0},\n";
    }
    return InRoot(
        type, parts + "extern Tavik::MethodDescriptor " + table + "[];\nconstinit Tavik::MethodDescriptor "
                  + table + "[] = {\n" + rows + "    {},\n};\n");
}

} // namespace Schemac::Emit
