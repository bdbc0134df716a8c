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

    Template Write(const Tavik::DataObjectType& type) {
        if (type.GetProperties().empty() && !type.IsOpen()) {
            NoteChoice(type, type);
        }
        WriteObject(type, true);
        m_template.text += '\n';
        return std::move(m_template);
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

    /// The types that can stand in a place of the declared type, which is not among them.
    std::vector<const Tavik::Type*> FindOthers(const Tavik::DataObjectType& declared) const {
        std::vector<const Tavik::Type*> others = GetDerivedTypes(declared);
        std::erase_if(others, [this](const Tavik::Type* type) { return !type->IsPartOf(m_options.version); });
        return others;
    }

    /// The type to show in a place: the declared one, or for a full template, and for a mere base, the first
    /// that derives from it and has nothing derived from itself.
    const Tavik::DataObjectType& Choose(const Tavik::DataObjectType& declared) const {
        const bool isMereBase = declared.GetProperties().empty() && !declared.IsOpen();
        if (IsBuiltIn(declared) || (!m_options.full && !isMereBase)) {
            return declared;
        }
        for (const Tavik::Type* type : FindOthers(declared)) {
            const auto* candidate = static_cast<const Tavik::DataObjectType*>(type);
            if (!IsAround(*candidate) && GetDerivedTypes(*type).empty()) {
                return *candidate;
            }
        }
        return declared;
    }

    /// Remembers what can stand in the place that is being written, once for each declared type.
    void NoteChoice(const Tavik::DataObjectType& declared, const Tavik::DataObjectType& shown) {
        const bool isNoted = std::any_of(
            m_template.choices.begin(), m_template.choices.end(),
            [&declared](const TemplateChoice& choice) { return choice.declared == &declared; });
        std::vector<const Tavik::Type*> others = FindOthers(declared);
        std::erase(others, &shown);
        if (!isNoted && !others.empty()) {
            m_template.choices.push_back({m_path, &declared, std::move(others)});
        }
    }

    void WriteObject(const Tavik::DataObjectType& type, bool namesType) {
        const bool isEndless = IsAround(type); // required within itself: nobody could fill that in
        m_template.text += '{';
        m_around.push_back(&type);
        const char* separator = "";
        const auto key = [&](const char* name) {
            m_template.text += separator;
            NewLine();
            Tavik::AppendQuoted(m_template.text, name);
            m_template.text += ": ";
            separator = ",";
        };
        if (namesType) {
            key("$type");
            Tavik::AppendQuoted(m_template.text, type.GetWireName());
        }
        for (const Tavik::Property* property : type.GetProperties()) {
            if (!isEndless && IsWritten(*property)) {
                const std::size_t outerSize = m_path.size();
                m_path += (m_path.empty() ? "" : ".") + std::string(property->GetName());
                m_path += property->IsArray() ? "[0]" : "";
                key(property->GetName());
                WriteProperty(*property);
                m_path.resize(outerSize);
            }
        }
        m_around.pop_back();
        if (*separator != '\0') {
            NewLine();
        }
        m_template.text += '}';
    }

    void WriteProperty(const Tavik::Property& property) {
        const Tavik::Type& type = *property.GetType();
        if (!property.IsArray()) {
            WriteValue(type);
        } else if (type.GetKind() == Tavik::TypeKind::Byte) {
            Tavik::AppendBase64(m_template.text, "", 1); // one byte: an array without elements is unset
        } else {
            m_template.text += '[';
            WriteValue(type);
            m_template.text += ']';
        }
    }

    void WriteValue(const Tavik::Type& type) {
        switch (type.GetKind()) {
        case Tavik::TypeKind::Boolean: m_template.text += "false"; break;
        case Tavik::TypeKind::Byte:
        case Tavik::TypeKind::Int:
        case Tavik::TypeKind::Long:
        case Tavik::TypeKind::Float: m_template.text += '0'; break;
        case Tavik::TypeKind::DateTime:
            Tavik::AppendQuoted(m_template.text, Pellum::System::DateTime().ToString());
            break;
        case Tavik::TypeKind::TypeName:
            Tavik::AppendQuoted(m_template.text, m_around.front()->GetWireName());
            break;
        case Tavik::TypeKind::Any: m_template.text += R"({"$type": "string", "value": ""})"; break;
        case Tavik::TypeKind::Enum:
            Tavik::AppendQuoted(m_template.text, static_cast<const Tavik::EnumType&>(type).GetTags().front());
            break;
        case Tavik::TypeKind::Managed:
            m_template.text += R"({"mo": )";
            Tavik::AppendQuoted(m_template.text, type.GetWireName());
            m_template.text += R"(, "id": ""})";
            break;
        case Tavik::TypeKind::Data:
        case Tavik::TypeKind::Fault: {
            const auto& declared = static_cast<const Tavik::DataObjectType&>(type);
            const Tavik::DataObjectType& shown = Choose(declared);
            NoteChoice(declared, shown);
            WriteObject(shown, !GetDerivedTypes(declared).empty());
            break;
        }
        default: m_template.text += R"("")"; break;
        }
    }

    void NewLine() {
        m_template.text += '\n';
        m_template.text.append(2 * m_around.size(), ' ');
    }

    const TemplateOptions& m_options;
    Template m_template;
    std::string m_path;                                 ///< of the property that is being written
    std::vector<const Tavik::DataObjectType*> m_around; ///< the types of the objects that are open
};

} // namespace

Template WriteTemplate(const Tavik::DataObjectType& type, const TemplateOptions& options) {
    return TemplateWriter(options).Write(type);
}

} // namespace Tool
