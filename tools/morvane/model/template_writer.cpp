#include "tools/morvane/model/template_writer.h"

#include "pellum/system/date_time.h"
#include "tavik/type/enum_type.h"
#include "tavik/value/json_text.h"
#include "tools/morvane/model/type_facts.h"

#include <algorithm>
#include <vector>

namespace Tool {

namespace {

/// Objects around a place whose optional properties are still written.
constexpr std::size_t kFullDepth = 2;

class TemplateWriter {
public:
    explicit TemplateWriter(const TemplateOptions& options) : m_options(options) {}

    std::string Write(const Tavik::DataObjectType& type) {
        WriteObject(type, true);
        m_out += '\n';
        return std::move(m_out);
    }

private:
    /// An optional property that leads back to a type around it would go on for ever.
    bool IsWritten(const Tavik::Property& property) const {
        if (!property.IsPartOf(m_options.version) || property.GetType() == nullptr) {
            return false;
        }
        if (!property.IsOptional()) {
            return true;
        }
        const auto* type = dynamic_cast<const Tavik::DataObjectType*>(property.GetType());
        return m_options.full && m_around.size() <= kFullDepth
            && property.GetType()->IsPartOf(m_options.version)
            && (type == nullptr || !IsAround(Choose(*type)));
    }

    bool IsAround(const Tavik::DataObjectType& type) const {
        return std::find(m_around.begin(), m_around.end(), &type) != m_around.end();
    }

    /// The type to show in a place: the declared one, or for a full template the first that derives from it
    /// and has nothing derived from itself.
    const Tavik::DataObjectType& Choose(const Tavik::DataObjectType& declared) const {
        if (!m_options.full) {
            return declared;
        }
        const auto derived = GetDerivedTypes(declared);
        for (const Tavik::Type* type : derived) {
            const auto* candidate = static_cast<const Tavik::DataObjectType*>(type);
            if (type->IsPartOf(m_options.version) && !IsAround(*candidate)
                && GetDerivedTypes(*type).empty()) {
                return *candidate;
            }
        }
        return declared;
    }

    void WriteObject(const Tavik::DataObjectType& type, bool namesType) {
        const bool isEndless = IsAround(type); // required within itself: nobody could fill that in
        m_out += '{';
        m_around.push_back(&type);
        const char* separator = "";
        const auto key = [&](const char* name) {
            m_out += separator;
            NewLine();
            Tavik::AppendQuoted(m_out, name);
            m_out += ": ";
            separator = ",";
        };
        if (namesType) {
            key("$type");
            Tavik::AppendQuoted(m_out, type.GetWireName());
        }
        for (const Tavik::Property* property : type.GetProperties()) {
            if (!isEndless && IsWritten(*property)) {
                key(property->GetName());
                WriteProperty(*property);
            }
        }
        m_around.pop_back();
        if (*separator != '\0') {
            NewLine();
        }
        m_out += '}';
    }

    void WriteProperty(const Tavik::Property& property) {
        const Tavik::Type& type = *property.GetType();
        if (!property.IsArray()) {
            WriteValue(type);
        } else if (type.GetKind() == Tavik::TypeKind::Byte) {
            Tavik::AppendBase64(m_out, "", 1); // one byte: an array without elements is unset
        } else {
            m_out += '[';
            WriteValue(type);
            m_out += ']';
        }
    }

    void WriteValue(const Tavik::Type& type) {
        switch (type.GetKind()) {
        case Tavik::TypeKind::Boolean: m_out += "false"; break;
        case Tavik::TypeKind::Byte:
        case Tavik::TypeKind::Int:
        case Tavik::TypeKind::Long:
        case Tavik::TypeKind::Float: m_out += '0'; break;
        case Tavik::TypeKind::DateTime:
            Tavik::AppendQuoted(m_out, Pellum::System::DateTime().ToString());
            break;
        case Tavik::TypeKind::TypeName: Tavik::AppendQuoted(m_out, m_around.front()->GetWireName()); break;
        case Tavik::TypeKind::Any: m_out += R"({"$type": "string", "value": ""})"; break;
        case Tavik::TypeKind::Enum:
            Tavik::AppendQuoted(m_out, static_cast<const Tavik::EnumType&>(type).GetTags().front());
            break;
        case Tavik::TypeKind::Managed:
            m_out += R"({"mo": )";
            Tavik::AppendQuoted(m_out, type.GetWireName());
            m_out += R"(, "id": ""})";
            break;
        case Tavik::TypeKind::Data:
        case Tavik::TypeKind::Fault: {
            const auto& declared = static_cast<const Tavik::DataObjectType&>(type);
            WriteObject(Choose(declared), !GetDerivedTypes(declared).empty());
            break;
        }
        default: m_out += R"("")"; break;
        }
    }

    void NewLine() {
        m_out += '\n';
        m_out.append(2 * m_around.size(), ' ');
    }

    const TemplateOptions& m_options;
    std::string m_out;
    std::vector<const Tavik::DataObjectType*> m_around; ///< the types of the objects that are open
};

} // namespace

std::string WriteTemplate(const Tavik::DataObjectType& type, const TemplateOptions& options) {
    return TemplateWriter(options).Write(type);
}

} // namespace Tool
