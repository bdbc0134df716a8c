#include "schemac/sema/describe.h"

namespace Schemac::Sema {

Family FamilyOf(const Model::Type& type) {
    using Model::BuiltinKind;
    switch (type.kind) {
    case Model::TypeKind::Data: return Family::Data;
    case Model::TypeKind::Fault: return Family::Fault;
    case Model::TypeKind::Managed: return Family::Managed;
    case Model::TypeKind::Enum: return Family::Enum;
    case Model::TypeKind::Builtin: break;
    }
    if (type.Is(BuiltinKind::DynamicData)) {
        return Family::Data;
    }
    if (type.Is(BuiltinKind::MethodFault) || type.Is(BuiltinKind::RuntimeFault)) {
        return Family::Fault;
    }
    return type.Is(BuiltinKind::ManagedObject) ? Family::Managed : Family::Scalar;
}

const Model::Type& RootOf(Family family, const Model::ModuleBuilder& module) {
    switch (family) {
    case Family::Fault: return module.Builtin(Model::BuiltinKind::MethodFault);
    case Family::Managed: return module.Builtin(Model::BuiltinKind::ManagedObject);
    default: return module.Builtin(Model::BuiltinKind::DynamicData);
    }
}

std::string_view Article(Family family) {
    switch (family) {
    case Family::Data: return "a data type";
    case Family::Fault: return "a fault";
    case Family::Managed: return "a managed type";
    case Family::Enum: return "an enumeration";
    case Family::Scalar: return "a built-in type";
    }
    return {};
}

std::string ChainText(const std::vector<std::string_view>& names) {
    constexpr std::size_t kShown = 10;
    std::string text;
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (names.size() > kShown && index == kShown / 2) {
            index = names.size() - kShown / 2;
            text += "... -> ";
        }
        text += names[index];
        text += " -> ";
    }
    text += names.front();
    return text;
}

} // namespace Schemac::Sema
