#pragma once

#include "schemac/model/module.h"

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Schemac::Emit {

/// The message that stands where an object of a type or of one derived from it can be.
struct ProtoChoice {
    const Model::Type* base = nullptr;
    std::vector<const Model::Type*> alternatives; ///< the base first; younger versions of the library last
};

/// One .proto file.
struct ProtoFile {
    std::string path;
    std::string user;                              ///< what needs a file of that name, for messages
    std::vector<const Model::SourceFile*> sources; ///< the schema that it stands for, if any
    std::vector<const Model::Type*> types;         ///< data types, faults and enumerations, nested ones, too
    std::vector<const ProtoChoice*> choices;
};

/// What is written of a module as protobuf, and in which file: all data types, faults and enumerations of the
/// library, what these and its calls refer to of others, and a choice for every place that needs one.
/// Protobuf's files must not import each other, so those of a cycle become one.
class ProtoPlan {
public:
    explicit ProtoPlan(const Model::Module& module);

    /// The support messages, the library's files, others', choices. None but the first is empty.
    const std::vector<ProtoFile>& Files() const { return m_files; }

    /// The choice for a type that others are derived from; null for any other.
    const ProtoChoice* FindChoice(const Model::Type& type) const;

    /// Where a data type, a fault or an enumeration is written, or the choice for it.
    const std::string& PathOf(const Model::Type& type) const { return m_paths.at(&type); }

    const std::string& PathOf(const ProtoChoice& choice) const { return m_paths.at(&choice); }

    /// Where the messages stand that all schemas share.
    const std::string& SupportPath() const { return m_supportPath; }

    /// The base as a message of its own; null where it has nothing to carry.
    static const Model::DataType* BaseMessage(const Model::Type& type);

private:
    void FindDerived(const Model::Module& module);
    void FindTypes(const Model::Module& module);
    void MakeFiles(const Model::Module& module);
    std::vector<const void*> ReferencesOf(const Model::Type& type) const;
    std::vector<const Model::Type*> AllDerivedFrom(const Model::Type& base) const;

    std::string m_supportPath;
    std::unordered_map<const Model::Type*, std::vector<const Model::Type*>> m_derived; ///< directly
    std::unordered_map<const Model::Version*, std::size_t> m_versionOrder;
    std::vector<const Model::Type*> m_types; ///< in the order in which they are written
    std::unordered_map<const Model::Type*, ProtoChoice> m_choices;
    std::unordered_map<const void*, std::string> m_paths; ///< of types and choices
    std::vector<ProtoFile> m_files;
};

} // namespace Schemac::Emit
