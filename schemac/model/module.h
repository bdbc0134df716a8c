#pragma once

#include "schemac/model/type.h"
#include "schemac/model/version.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Schemac::Model {

/// One schema file and the types that stand at its top level.
struct SourceFile {
    std::string path; ///< relative to the source root, with '/': "types/api/core/connection.tavik"
    bool isImported = false;
    std::vector<const Type*> types; ///< in written order
};

/// Everything that a run of the compiler knows about a library, resolved and checked. Nothing changes
/// after resolution: readers get const access only and may share a module between threads.
///
/// The lists of types hold the library's own types only, nested ones included.
class Module {
public:
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module();

    /// Name of the library, "types".
    const std::string& Library() const { return m_library; }

    /// Data and fault types in slot order: schema order, but a base before what derives from it.
    const std::vector<const DataType*>& DataTypes() const { return m_dataTypes; }

    /// Enumerations in slot order: the order that the schema gives, else schema order.
    const std::vector<const EnumType*>& EnumTypes() const { return m_enumTypes; }

    /// Managed types in slot order: schema order, but a base before what derives from it.
    const std::vector<const ManagedType*>& ManagedTypes() const { return m_managedTypes; }

    /// The library's own versions in schema order.
    const std::vector<const Version*>& Versions() const { return m_versions; }

    /// The library's own schema files in command-line order.
    const std::vector<const SourceFile*>& Files() const { return m_files; }

    /// Types of other libraries that own types refer to, in order of first use. Built-in types are not among
    /// them.
    const std::vector<const Type*>& ImportedTypes() const { return m_importedTypes; }

    /// All data and fault types of other libraries, referred to or not, in schema order.
    const std::vector<const DataType*>& ImportedDataTypes() const { return m_importedDataTypes; }

    const BuiltinType& Builtin(BuiltinKind builtin) const;

    /// Own, imported or built-in type of that dotted name; null when there is none. Linear in the number of
    /// types.
    const Type* FindType(std::string_view dottedName) const;

private:
    friend class ModuleBuilder;
    explicit Module(std::string library);

    std::string m_library;
    std::vector<std::unique_ptr<Type>> m_ownedTypes;
    std::vector<std::unique_ptr<Version>> m_ownedVersions;
    std::vector<std::unique_ptr<SourceFile>> m_ownedFiles;
    std::vector<const BuiltinType*> m_builtins; ///< indexed by BuiltinKind
    std::vector<const DataType*> m_dataTypes;
    std::vector<const EnumType*> m_enumTypes;
    std::vector<const ManagedType*> m_managedTypes;
    std::vector<const Version*> m_versions;
    std::vector<const SourceFile*> m_files;
    std::vector<const Type*> m_importedTypes;
    std::vector<const DataType*> m_importedDataTypes;
};

} // namespace Schemac::Model
