#include "tools/morvane/model/types_document.h"

#include "tavik/descriptor/records.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/json_text.h"
#include "tools/morvane/model/type_facts.h"

namespace Tool {

namespace {

class DocumentWriter {
public:
    explicit DocumentWriter(std::string& out) : m_out(out) {}

    void WriteType(std::size_t slot, const Tavik::Type& type) {
        Open('{');
        Number("slot", slot);
        Text("name", type.GetName());
        Text("wire", type.GetWireName());
        Text("class", GetClassName(type.GetName()).c_str());
        Text("kind", GetKindName(type.GetKind()));
        if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&type)) {
            const Tavik::DataTypeInfo& info = dataType->GetDataTypeInfo();
            Head(info.base, type);
            Properties("properties", info.properties);
            Empty("values");
            Empty("methods");
        } else if (const auto* enumType = dynamic_cast<const Tavik::EnumType*>(&type)) {
            Head(nullptr, type);
            Empty("properties");
            Values(enumType->GetEnumTypeInfo());
            Empty("methods");
        } else if (const auto* managedType = dynamic_cast<const Tavik::ManagedObjectType*>(&type)) {
            const Tavik::ManagedTypeInfo& info = managedType->GetManagedTypeInfo();
            Head(info.base, type);
            Properties("properties", info.properties);
            Empty("values");
            Methods(info.methods);
        }
        Close('}');
    }

private:
    void Head(const Tavik::TypeInfo* base, const Tavik::Type& type) {
        Text("base", base == nullptr ? nullptr : base->name);
        Text("version", type.GetInfo().version);
    }

    void Properties(const char* key, const Tavik::PropertyDescriptor* properties) {
        Key(key);
        Open('[');
        for (const auto* property = properties; property != nullptr && property->name != nullptr;
             ++property) {
            Separate();
            Open('{');
            Text("name", property->name);
            Descriptor(*property);
            Close('}');
        }
        Close(']');
    }

    void Descriptor(const Tavik::PropertyDescriptor& descriptor) {
        Text("type", descriptor.type->name);
        Number("flags", descriptor.flags);
        Text("version", descriptor.version);
    }

    void Values(const Tavik::EnumTypeInfo& info) {
        Key("values");
        Open('[');
        for (const char* const* tag = info.values; *tag != nullptr; ++tag) {
            Separate();
            Tavik::AppendQuoted(m_out, *tag);
        }
        Close(']');
    }

    void Methods(const Tavik::MethodDescriptor* methods) {
        Key("methods");
        Open('[');
        for (const auto* method = methods; method != nullptr && method->name != nullptr; ++method) {
            Separate();
            Method(*method);
        }
        Close(']');
    }

    void Method(const Tavik::MethodDescriptor& method) {
        Open('{');
        Text("name", method.name);
        Text("wire", method.wireName);
        Text("privilege", method.privilege);
        Text("version", method.version);
        Flag("longRunning", method.longRunning != 0);
        Flag("credentials", method.credentials != 0);
        Key("result");
        if (method.result.type == nullptr) {
            m_out += "null";
        } else {
            Open('{');
            Descriptor(method.result);
            Close('}');
        }
        Properties("parameters", method.parameters);
        Key("faults");
        Open('[');
        for (const auto* fault = method.faults; fault != nullptr && *fault != nullptr; ++fault) {
            Separate();
            Tavik::AppendQuoted(m_out, (*fault)->name);
        }
        Close(']');
        Close('}');
    }

    void Open(char bracket) {
        m_out += bracket;
        m_isFirst = true;
    }

    void Close(char bracket) {
        m_out += bracket;
        m_isFirst = false;
    }

    void Separate() {
        if (!m_isFirst) {
            m_out += ", ";
        }
        m_isFirst = false;
    }

    void Key(const char* key) {
        Separate();
        Tavik::AppendQuoted(m_out, key);
        m_out += ": ";
    }

    void Text(const char* key, const char* text) {
        Key(key);
        if (text == nullptr) {
            m_out += "null";
        } else {
            Tavik::AppendQuoted(m_out, text);
        }
    }

    void Number(const char* key, std::size_t number) {
        Key(key);
        m_out += std::to_string(number);
    }

    void Flag(const char* key, bool flag) {
        Key(key);
        m_out += flag ? "true" : "false";
    }

    void Empty(const char* key) {
        Key(key);
        m_out += "[]";
    }

    std::string& m_out;
    bool m_isFirst = true; ///< nothing has been written yet in the innermost object or array
};

} // namespace

std::string WriteTypesDocument(
    const Tavik::LoadedLibrary& library, const std::function<bool(const Tavik::Type&)>& accepts) {
    std::string out = R"({"types": [)";
    const char* separator = "\n";
    for (std::size_t slot = 0; slot < library.types.size(); ++slot) {
        if (library.types[slot] != nullptr && accepts(*library.types[slot])) {
            out += separator;
            DocumentWriter(out).WriteType(slot, *library.types[slot]);
            separator = ",\n";
        }
    }
    out += "\n]}\n";
    return out;
}

} // namespace Tool
