#include "schemac/emit/interface_text.h"

#include <algorithm>

#include "schemac/emit/cpp_types.h"
#include "schemac/emit/doc_comment.h"
#include "schemac/emit/operations.h"
#include "schemac/emit/template.h"
#include "schemac/model/naming.h"

namespace Schemac::Emit {

namespace {

constexpr std::string_view kInterface = R"(
$doc$
class $api$ $name$ : public virtual $base$ {
public:
    $nested$
    $getters$
    $methods$
    $replaced$
    $constants$
    TYPES_INTERFACE($simple$)
};
)";

constexpr std::string_view kInterfaceDefinitions = R"(
namespace $namespace$ {

$name$::~$simple$() = default;

Tavik::ManagedObjectType* $name$::_GetType() const {
    return Tavik::GetMoType<$name$>();
}

$replaced$
$constants$

} // namespace $namespace$
)";

constexpr std::string_view kReplaced = R"(
void $name$::$function$(Pellum::Ref<$base$>& result) {
    Pellum::Ref<$own$> own;
    $function$(own);
    result = own;
}

)";

constexpr std::string_view kDispatch = R"(
template <>
struct Morvane::Support::InterfaceTraits<$class$> {
    using Stub = $stub$;
    static constexpr std::array<DispatchCase, $count$> kCases = {
        $cases$
    };
};

template struct Morvane::Support::ManagedFunctions<$class$>;
)";

std::string BaseInterface(const Model::ManagedType& type) {
    return type.base->IsBuiltin() ? "Tavik::ManagedObject" : Naming::QualifiedClassName(*type.base);
}

/// "`find(folder : app.Folder, depth? : int) -> app.Item`": the C++ signature does not say what a reference
/// refers to, nor which pointers may be null.
std::string Signature(const Model::Method& method) {
    std::vector<std::string> parameters;
    for (const Model::Property& parameter : method.parameters) {
        parameters.push_back(parameter.name + (parameter.isOptional ? "? : " : " : ") + TypeText(parameter));
    }
    std::string text = '`' + method.name + '(' + Naming::Join(parameters, ", ") + ')';
    if (method.HasResult()) {
        text += " -> " + TypeText(method.result) + (method.result.isOptional ? " (optional)" : "");
    }
    return text + '`';
}

std::string Doc(const Operation& operation, const Model::ManagedType& owner) {
    if (operation.IsGetter()) {
        const std::string& doc = operation.result->doc;
        return DocComment((doc.empty() ? "" : doc + "\n") + PropertyFacts(*operation.result, owner));
    }
    const Model::Method& method = *operation.method;
    std::string facts = Signature(method);
    facts += method.version != owner.version ? ", since " + method.version->name : "";
    facts += method.privilege.empty() ? "" : ", needs " + method.privilege;
    std::vector<std::string> faults;
    for (const Model::Type* fault : method.faults) {
        faults.push_back(Naming::QualifiedClassName(*fault));
    }
    facts += faults.empty() ? "" : ", throws " + Naming::Join(faults, ", ");
    return DocComment((method.doc.empty() ? "" : method.doc + "\n") + facts);
}

std::string Declaration(const Operation& operation, const Model::ManagedType& owner) {
    const bool repeats = RepeatsInherited(operation, owner);
    return Doc(operation, owner) + (repeats ? "" : "virtual ") + ReturnType(operation.result) + " "
         + operation.function + CallParameters(operation) + (repeats ? " override" : "") + " = 0;\n";
}

/// The address of an operation's function; of overloaded ones, which only getters are, the right one.
std::string FunctionAddress(const Operation& operation, const Model::ManagedType& owner, bool isOverloaded) {
    const std::string name = Naming::QualifiedClassName(owner);
    const std::string address = "&" + name + "::" + operation.function;
    return isOverloaded ? "static_cast<void (" + name + "::*)(Pellum::Ref<" + OutType(operation.result)
                              + ">&)>(" + address + ")"
                        : address;
}

} // namespace

std::string InterfaceClass(
    const Model::ManagedType& type, const std::string& api, const std::string& nested) {
    std::string getters;
    std::string methods;
    std::string constants;
    for (const Operation& operation : OperationsOf(type)) {
        (operation.IsGetter() ? getters : methods) += Declaration(operation, type) + "\n";
        constants += operation.IsGetter()
                       ? ""
                       : "static const char " + Naming::MethodConstant(operation.method->name) + "[];\n";
    }
    std::string replaced;
    for (const ReplacedGetter& getter : ReplacedGettersOf(type)) {
        replaced += "/// Answers with what the other one does.\nvoid " + getter.function + "(Pellum::Ref<"
                  + OutType(getter.property) + ">& result) override;\n\n";
    }
    return Fill(
        kInterface, {{"doc", TypeDoc(type)},
                     {"api", api},
                     {"name", RelativeName(type)},
                     {"base", BaseInterface(type)},
                     {"nested", nested},
                     {"getters", getters},
                     {"methods", methods},
                     {"replaced", replaced},
                     {"constants", constants.empty() ? "" : constants + "\n"},
                     {"simple", type.classPath.back()}});
}

std::string InterfaceDefinitions(const Model::ManagedType& type) {
    const std::string name = RelativeName(type);
    std::string replaced;
    for (const ReplacedGetter& getter : ReplacedGettersOf(type)) {
        replaced += Fill(
            kReplaced, {{"name", name},
                        {"function", getter.function},
                        {"base", OutType(getter.property)},
                        {"own", OutType(getter.replacement)}});
    }
    std::string constants;
    for (const Model::Method& method : type.methods) {
        constants += "const char " + name + "::" + Naming::MethodConstant(method.name) + "[] = \""
                   + type.dottedName + "." + method.name + "\";\n";
    }
    return Fill(
        kInterfaceDefinitions, {{"namespace", Naming::CppNamespace(type)},
                                {"name", name},
                                {"simple", type.classPath.back()},
                                {"replaced", replaced},
                                {"constants", constants}});
}

std::string DispatchDefinitions(const Model::ManagedType& type) {
    const std::vector<Operation> operations = OperationsOf(type);
    const std::vector<ReplacedGetter> replaced = ReplacedGettersOf(type);
    std::string cases;
    for (const Operation& operation : operations) {
        const bool isOverloaded =
            std::any_of(replaced.begin(), replaced.end(), [&](const ReplacedGetter& getter) {
                return getter.function == operation.function;
            });
        cases += "&RunMethod<" + FunctionAddress(operation, type, isOverloaded) + ">,\n";
    }
    return Fill(
        kDispatch, {{"class", Naming::QualifiedClassName(type)},
                    {"stub", Naming::StubClass(type)},
                    {"count", std::to_string(operations.size())},
                    {"cases", cases}});
}

std::string ManagedFunctions(const Model::ManagedType& type) {
    const std::string functions =
        "&Morvane::Support::ManagedFunctions<" + Naming::QualifiedClassName(type) + ">::";
    return functions + "Dispatch, " + functions + "CreateStub";
}

} // namespace Schemac::Emit
