#pragma once

#include "schemac/model/module.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Schemac::Model {

/// Fills a module while it is resolved; afterwards nobody can change it. A new module has the built-in types
/// and the runtime's base version.
class ModuleBuilder {
public:
    explicit ModuleBuilder(std::string library);

    /// The added object belongs to the module. Data, enumeration and managed types, versions and files
    /// join the module's lists only in Finish.
    template <typename T, typename... Args>
    T& AddType(Args&&... args) {
        auto type = std::make_unique<T>(std::forward<Args>(args)...);
        T& added = *type;
        m_module->m_ownedTypes.push_back(std::move(type));
        return added;
    }

    Version& AddVersion();
    SourceFile& AddFile();

    /// The enumerations in slot order: all of the library's own, each once. Schema order unless it is called.
    void SetEnumOrder(std::vector<const EnumType*> order) { m_module->m_enumTypes = std::move(order); }

    /// All types so far, built-in ones first.
    const std::vector<std::unique_ptr<Type>>& Types() const { return m_module->m_ownedTypes; }

    const Version& BaseVersion() const { return *m_module->m_ownedVersions.front(); }

    const BuiltinType& Builtin(BuiltinKind builtin) const { return m_module->Builtin(builtin); }

    /// Fills the module's lists and hands it out; the builder is of no use afterwards. Wants a module without
    /// errors: every reference resolved, no type derived from itself.
    std::unique_ptr<const Module> Finish();

private:
    std::unique_ptr<Module> m_module;
};

} // namespace Schemac::Model
