#pragma once

#include "schemac/diagnostic/reporter.h"
#include "schemac/model/module_builder.h"
#include "schemac/parse/syntax_tree.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace Schemac::Sema {

/// A parsed file and what the command line says of it.
struct InputFile {
    Syntax::File tree;
    std::string path; ///< relative to the source root, with '/'
    bool isImported = false;
};

/// A declared type: as written, and as it becomes. Properties, methods and tags of the two have the same
/// positions.
struct TypeEntry {
    const Syntax::TypeDecl* decl = nullptr;
    Model::Type* type = nullptr;
    std::string nameSpace; ///< "morvane.params"

    /// The model side as its kind; null when it is of another.
    Model::DataType* Data() const { return dynamic_cast<Model::DataType*>(type); }

    Model::EnumType* Enum() const { return dynamic_cast<Model::EnumType*>(type); }

    Model::ManagedType* Managed() const { return dynamic_cast<Model::ManagedType*>(type); }
};

struct VersionEntry {
    const Syntax::VersionDecl* decl = nullptr;
    Model::Version* version = nullptr;
};

/// What the steps work on. A reference that could not be resolved stays null after its error was reported;
/// what reads it has to step over it.
struct Program {
    const std::vector<InputFile>& files;
    Model::ModuleBuilder& module;
    Reporter& reporter;

    /// In schema order, an enclosing type before its nested ones; a second declaration of a name included.
    std::vector<TypeEntry> types = {};
    std::vector<VersionEntry> versions = {};

    std::unordered_map<std::string, const Model::Type*> typesByName = {};  ///< dotted; built-in types too
    std::unordered_map<std::string, const Model::Type*> typesByClass = {}; ///< "Zabro::Fault::NotFound"
    std::map<std::string, const Model::Version*> versionsByName = {};
};

} // namespace Schemac::Sema
