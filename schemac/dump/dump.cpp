#include "schemac/dump/dump.h"

#include "schemac/dump/json_writer.h"
#include "schemac/model/naming.h"

namespace Schemac {

namespace {

using namespace Model;

std::string_view KindName(TypeKind kind) {
    switch (kind) {
    case TypeKind::Builtin: return "builtin";
    case TypeKind::Data: return "data";
    case TypeKind::Fault: return "fault";
    case TypeKind::Enum: return "enum";
    case TypeKind::Managed: return "managed";
    }
    return {};
}

class Dumper {
public:
    std::string Run(const Module& module) {
        m_json.BeginObject();
        Field("library", module.Library());
        List("versions", module.Versions(), [this](const Version* version) { Dump(*version); });
        List("dataTypes", module.DataTypes(), [this](const DataType* type) { Dump(*type); });
        List("enumTypes", module.EnumTypes(), [this](const EnumType* type) { Dump(*type); });
        List("managedTypes", module.ManagedTypes(), [this](const ManagedType* type) { Dump(*type); });
        List("importedTypes", module.ImportedTypes(), [this](const Type* type) {
            m_json.String(type->dottedName);
        });
        m_json.EndObject();
        return m_json.Take();
    }

private:
    void Field(std::string_view key, std::string_view value) {
        m_json.Key(key);
        m_json.String(value);
    }

    /// A field that is left out when there is nothing to say.
    void OptionalField(std::string_view key, std::string_view value) {
        if (!value.empty()) {
            Field(key, value);
        }
    }

    /// A field that is left out when it is false.
    void Flag(std::string_view key, bool value) {
        if (value) {
            m_json.Key(key);
            m_json.Bool(true);
        }
    }

    template <typename Items, typename DumpItem>
    void List(std::string_view key, const Items& items, const DumpItem& dumpItem) {
        m_json.Key(key);
        m_json.BeginArray();
        for (const auto& item : items) {
            dumpItem(item);
        }
        m_json.EndArray();
    }

    void Dump(const Version& version) {
        m_json.BeginObject();
        Field("name", version.fullName);
        OptionalField("label", version.label);
        OptionalField("doc", version.doc);
        List("includes", version.includes, [this](const Version* other) { m_json.String(other->fullName); });
        m_json.EndObject();
    }

    void DumpTypeHead(const Type& type) {
        Field("name", type.dottedName);
        Field("wire", type.wireName);
        Field("class", Naming::QualifiedClassName(type));
        Field("kind", KindName(type.kind));
        if (type.Base() != nullptr) {
            Field("base", type.Base()->dottedName);
        }
        Field("version", type.version->fullName);
        Field("header", Naming::HeaderPath(type));
        Field("doc", type.doc);
    }

    void Dump(const DataType& type) {
        m_json.BeginObject();
        DumpTypeHead(type);
        Flag("open", type.isOpen);
        if (type.httpStatus != 0) {
            m_json.Key("http");
            m_json.Number(type.httpStatus);
        }
        DumpUses("properties", type.properties);
        m_json.EndObject();
    }

    void Dump(const EnumType& type) {
        m_json.BeginObject();
        DumpTypeHead(type);
        List("tags", type.tags, [this](const EnumTag& tag) {
            m_json.BeginObject();
            Field("name", tag.name);
            OptionalField("doc", tag.doc);
            m_json.EndObject();
        });
        m_json.EndObject();
    }

    void Dump(const ManagedType& type) {
        m_json.BeginObject();
        DumpTypeHead(type);
        DumpUses("properties", type.properties);
        List("methods", type.methods, [this](const Method& method) { Dump(method); });
        m_json.EndObject();
    }

    void Dump(const Method& method) {
        m_json.BeginObject();
        Field("name", method.name);
        Field("wire", method.wireName);
        OptionalField("privilege", method.privilege);
        Field("version", method.version->fullName);
        Flag("longRunning", method.isLongRunning);
        Flag("credentials", method.carriesCredentials);
        OptionalField("doc", method.doc);
        DumpUses("parameters", method.parameters);
        m_json.Key("result");
        Dump(method.result);
        List("faults", method.faults, [this](const Type* fault) { m_json.String(fault->dottedName); });
        m_json.EndObject();
    }

    void DumpUses(std::string_view key, const std::vector<Property>& properties) {
        List(key, properties, [this](const Property& property) { Dump(property); });
    }

    void Dump(const Property& property) {
        m_json.BeginObject();
        Field("name", property.name);
        m_json.Key("type");
        if (property.type != nullptr) {
            m_json.String(property.type->dottedName);
        } else {
            m_json.Null();
        }
        Flag("array", property.isArray);
        Flag("optional", property.isOptional);
        Flag("secret", property.isSecret);
        Flag("reference", property.IsReference());
        Field("version", property.version->fullName);
        OptionalField("doc", property.doc);
        m_json.EndObject();
    }

    JsonWriter m_json;
};

} // namespace

std::string DumpModule(const Module& module) {
    return Dumper().Run(module);
}

} // namespace Schemac
