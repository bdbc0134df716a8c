#include "schemac/emit/operations.h"

#include <algorithm>

#include "schemac/emit/cpp_types.h"
#include "schemac/model/naming.h"

namespace Schemac::Emit {

namespace {

std::string GetterName(const Model::Property& property, const Model::ManagedType& owner) {
    return Naming::AccessorName(Naming::Accessor::Get, property.name, owner);
}

/// A getter's signature but for its name.
std::string GetterSignature(const Model::Property& property) {
    return ReturnType(&property) + "(" + OutType(&property) + ")";
}

/// Calls `visit(base, property)` for every inherited declaration of that name, the nearest first.
template <class Visit>
void ForEachInherited(const Model::ManagedType& type, const std::string& name, Visit visit) {
    for (const Model::ManagedType* base = type.base->AsManaged(); base != nullptr;
         base = base->base->AsManaged()) {
        for (const Model::Property& property : base->properties) {
            if (property.name == name) {
                visit(*base, property);
            }
        }
    }
}

} // namespace

std::vector<Operation> OperationsOf(const Model::ManagedType& type) {
    static const std::vector<Model::Property> none;
    std::vector<Operation> operations;
    for (const Model::Method& method : type.methods) {
        operations.push_back(
            {Naming::MethodFunction(method.name, type), &method.parameters,
             method.HasResult() ? &method.result : nullptr, operations.size(), &method});
    }
    for (const Model::Property& property : type.properties) {
        operations.push_back({GetterName(property, type), &none, &property, operations.size(), nullptr});
    }
    return operations;
}

std::vector<ReplacedGetter> ReplacedGettersOf(const Model::ManagedType& type) {
    std::vector<ReplacedGetter> getters;
    for (const Model::Property& property : type.properties) {
        std::vector<std::string> signatures{GetterSignature(property)};
        ForEachInherited(
            type, property.name, [&](const Model::ManagedType& base, const Model::Property& inherited) {
                const std::string signature = GetterSignature(inherited);
                if (std::find(signatures.begin(), signatures.end(), signature) == signatures.end()) {
                    signatures.push_back(signature);
                    getters.push_back({&base, &inherited, &property, GetterName(property, type)});
                }
            });
    }
    return getters;
}

bool RepeatsInherited(const Operation& operation, const Model::ManagedType& type) {
    bool repeats = false;
    if (operation.IsGetter()) {
        ForEachInherited(
            type, operation.result->name, [&](const Model::ManagedType&, const Model::Property& inherited) {
                repeats = repeats || GetterSignature(inherited) == GetterSignature(*operation.result);
            });
    }
    return repeats;
}

std::string ReturnType(const Model::Property* result) {
    return result == nullptr || !OutType(result).empty() ? "void" : MemberType(*result);
}

std::string OutType(const Model::Property* result) {
    const Form form = result != nullptr ? FormOf(*result) : Form::Value;
    return form == Form::Array ? ArrayType(*result) : form == Form::Object ? ElementType(*result) : "";
}

std::string NamedParameters(
    const std::vector<Model::Property>& parameters, const std::vector<std::string>& more) {
    std::vector<std::string> names;
    std::vector<std::string> declarations;
    for (const Model::Property& parameter : parameters) {
        names.push_back(Naming::ParameterName(parameter.name));
        declarations.push_back(ParameterType(parameter) + " " + names.back());
    }
    for (std::size_t i = 0; i + 1 < more.size(); i += 2) {
        std::string name = more[i + 1];
        while (std::find(names.begin(), names.end(), name) != names.end()) {
            name += '_';
        }
        declarations.push_back(more[i] + " " + name);
    }
    return "(" + Naming::Join(declarations, ", ") + ")";
}

std::string CallParameters(const Operation& operation) {
    const std::string out = OutType(operation.result);
    return NamedParameters(
        *operation.parameters, out.empty() ? std::vector<std::string>{}
                                           : std::vector<std::string>{"Pellum::Ref<" + out + ">&", "result"});
}

std::string MethodObject(const Model::ManagedType& type, std::size_t index) {
    return type.classPath.front() + "::" + Naming::MethodObjectsGlobal(type) + "[" + std::to_string(index)
         + "]";
}

} // namespace Schemac::Emit
