#include "schemac/emit/fault_class.h"

#include "schemac/emit/cpp_types.h"
#include "schemac/emit/template.h"
#include "schemac/model/naming.h"

namespace Schemac::Emit {

namespace {

constexpr std::string_view kMembers = R"(
/// What is thrown for this fault.
class $api$ $exception$ : public $base$ {
    TAVIK_FAULT_EXCEPTION($exception$, $class$, $base$)

    $constructor$
};

TAVIK_FAULT_THROWN_AS($exception$)
)";

constexpr std::string_view kDefaultConstructor = R"(
/// With a new fault.
[[gnu::always_inline]] $exception$()
    : $exception$(Pellum::MakeRef<$class$>().Get()) {}
)";

constexpr std::string_view kConstructor = R"(
/// With a new fault that has these properties; takes counts of objects and arrays.
[[gnu::always_inline]] $explicit$$exception$($parameters$)
    : $exception$(Morvane::Support::MakeFault<$class$>([&]($class$& _fault) {
          $setters$
      }).Get()) {}
)";

/// The exception class of the base, runtime's or generated.
std::string BaseException(const Model::DataType& type) {
    const Model::BuiltinType* builtin = type.base->AsBuiltin();
    const bool isRoot = builtin != nullptr && builtin->builtin == Model::BuiltinKind::MethodFault;
    const std::string base = builtin == nullptr ? Naming::QualifiedClassName(*type.base)
                           : isRoot             ? "Tavik::MethodFault"
                                                : "Tavik::RuntimeFault";
    return base + "::" + Naming::ExceptionClass(*type.base);
}

/// Whether an argument for the only property would be taken for the fault itself.
bool IsTakenForFault(const Model::DataType& type) {
    if (type.properties.size() != 1 || type.properties.front().isArray) {
        return false;
    }
    const Model::Type* argument = type.properties.front().type;
    while (argument != nullptr && argument != &type) {
        argument = argument->Base();
    }
    return argument == &type;
}

std::string Constructor(const Model::DataType& type) {
    const std::string exception = Naming::ExceptionClass(type);
    const std::string name = Naming::QualifiedClassName(type);
    if (type.properties.empty()) {
        return Fill(kDefaultConstructor, {{"exception", exception}, {"class", name}});
    }
    std::vector<std::string> parameters;
    if (IsTakenForFault(type)) {
        parameters.emplace_back("Morvane::Support::FromProperties");
    }
    std::string setters;
    for (const Model::Property& property : type.properties) {
        const std::string parameter = Naming::ExceptionParameter(property.name);
        parameters.push_back(ParameterType(property) + " " + parameter);
        setters += "_fault." + Naming::AccessorName(Naming::Accessor::Set, property.name, type) + "("
                 + parameter + ");\n";
    }
    return Fill(
        kConstructor, {{"explicit", parameters.size() == 1 ? "explicit " : ""},
                       {"exception", exception},
                       {"parameters", Naming::Join(parameters, ", ")},
                       {"class", name},
                       {"setters", setters}});
}

} // namespace

std::string FaultMembers(const Model::DataType& type, const std::string& exportMacro) {
    if (!type.IsFault()) {
        return {};
    }
    return Fill(
               kMembers, {{"api", exportMacro},
                          {"exception", Naming::ExceptionClass(type)},
                          {"class", Naming::QualifiedClassName(type)},
                          {"base", BaseException(type)},
                          {"constructor", Constructor(type)}})
         + "\n";
}

std::string FaultDefinitions(const Model::DataType& type) {
    return type.IsFault()
             ? "TAVIK_FAULT_SOURCE(" + RelativeName(type) + ", " + Naming::ExceptionClass(type) + ")\n\n"
             : "";
}

} // namespace Schemac::Emit
