#include "tavik/value/print.h"

#include "pellum/system/date_time.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/version.h"
#include "tavik/value/json_text.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/scalar_array.h"
#include "tavik/value/text_buffer.h"
#include "tavik/value/walk.h"

#include <cstring>
#include <vector>

namespace Tavik {

namespace {

constexpr std::string_view kTrue = "true";
constexpr std::string_view kFalse = "false";
constexpr std::string_view kRedacted = "\"***\"";

class JsonPrinter final : public ValueVisitor {
public:
    JsonPrinter(const PrintOptions& options, std::string& out)
        : m_options(options), m_out(out), m_walker(*this) {}

    void Print(const Any* value) { m_walker.Walk(value, m_options.declaredType); }

    void Print(const OpenValue& value) { m_walker.Walk(value); }

    bool HasProblem() const { return m_failed; }

    const PrintProblem& GetProblem() const { return m_problem; }

    bool BeginObject(
        const DataObject& /*object*/, const DataObjectType& type, const Type* declared) override {
        CheckVersion(type);
        Open('{');
        if (declared != &type) {
            WriteKey("$type");
            AppendQuoted(m_out, type.GetWireName());
        }
        return true;
    }

    void EndObject() override { Close('}'); }

    bool VisitProperty(const Property& property, bool isSet) override {
        if (!isSet) {
            if (m_options.requireComplete && !property.IsOptional() && property.IsPartOf(m_options.version)) {
                Report(property.IsArray() ? "is required and has no element" : "is required and not set");
            }
            return false;
        }
        if (!property.IsPartOf(m_options.version)) {
            return false;
        }
        WriteKey(property);
        if (property.IsSecret() && !m_options.showSecrets) {
            m_out.Append(kRedacted);
            return false;
        }
        return true;
    }

    bool BeginArray(const ArrayBase& array, const Type& elementType, const Type* declared) override {
        const bool wrapped = declared == nullptr;
        if (wrapped) {
            OpenTyped(std::string(elementType.GetWireName()) + "[]");
        }
        if (elementType.GetKind() == TypeKind::Byte) {
            const auto& bytes = static_cast<const Array<signed char>&>(array).GetElements();
            AppendBase64(m_out, bytes.data(), bytes.size());
            if (wrapped) {
                Close('}');
            }
            return false;
        }
        Open('[');
        m_levels.back().wrapped = wrapped;
        m_levels.back().inlined = HoldsScalars(elementType);
        return true;
    }

    void EndArray() override {
        const bool wrapped = m_levels.back().wrapped;
        Close(']');
        if (wrapped) {
            Close('}');
        }
    }

    void VisitElement(std::size_t /*index*/) override { Separate(); }

    void VisitScalar(const Type& type, const void* value, bool boxed) override {
        CheckVersion(type);
        if (boxed) {
            OpenTyped(type.GetWireName());
            WriteScalar(type, value);
            Close('}');
        } else {
            WriteScalar(type, value);
        }
    }

    void VisitReference(const MoRef& reference, const Type* declared) override {
        if (m_options.version != nullptr || m_options.requireComplete) {
            CheckReference(reference, declared);
        }
        m_out.Append(R"({"mo": )");
        AppendQuoted(m_out, reference.GetTypeInfo().wireName);
        m_out.Append(R"(, "id": )");
        WriteText(reference.GetId());
        m_out.Append('}');
    }

    bool VisitOpenMember(const OpenMember& member) override {
        WriteKey(member.name);
        if (member.isTaken) {
            Report(kTakenName);
        }
        if (!m_options.showSecrets && member.IsSecret()) {
            m_out.Append(kRedacted);
            return false;
        }
        return true;
    }

    bool VisitOpenValue(const OpenValue& value) override {
        switch (value.GetKind()) {
        case OpenKind::Object: Open('{'); break;
        case OpenKind::Array:
            Open('[');
            m_levels.back().inlined = value.HoldsOnlyScalars();
            break;
        case OpenKind::String: WriteText(value.GetText()); break;
        default: m_out.Append(value.GetText()); break;
        }
        return true;
    }

    void EndOpenValue(const OpenValue& value) override {
        Close(value.GetKind() == OpenKind::Object ? '}' : ']');
    }

    void VisitNull() override {
        m_out.Append("null");
        if (m_walker.GetDepth() > 0) {
            Report("is null, and an array has no unset elements");
        }
    }

    void VisitUnknown() override {
        m_out.Append("null");
        Report("is of a type that no library has registered");
    }

private:
    /// An object or array that has been opened.
    struct Level {
        bool empty = true;
        bool inlined = false; ///< all on one line
        bool wrapped = false; ///< stands inside an object that names its type
    };

    static bool HoldsScalars(const Type& type) {
        const TypeKind kind = type.GetKind();
        return kind != TypeKind::Data && kind != TypeKind::Fault && kind != TypeKind::Any
            && kind != TypeKind::Managed;
    }

    void Open(char bracket) {
        m_out.Append(bracket);
        m_levels.emplace_back();
    }

    void Close(char bracket) {
        const Level level = m_levels.back();
        m_levels.pop_back();
        if (!level.empty && !level.inlined) {
            NewLine();
        }
        m_out.Append(bracket);
    }

    /// Opens the object that names the type of a value which can not do so itself.
    void OpenTyped(std::string_view wireName) {
        Open('{');
        m_levels.back().inlined = true;
        WriteKey("$type");
        AppendQuoted(m_out, wireName);
        WriteKey("value");
    }

    void NewLine() {
        if (m_options.indent > 0) {
            m_out.Append('\n');
            m_out.AppendRepeated(m_levels.size() * static_cast<std::size_t>(m_options.indent), ' ');
        }
    }

    /// What comes before a member or an element.
    void Separate() {
        Level& level = m_levels.back();
        if (!level.empty) {
            m_out.Append(',');
            if (level.inlined || m_options.indent == 0) {
                m_out.Append(' ');
            }
        }
        level.empty = false;
        if (!level.inlined) {
            NewLine();
        }
    }

    void WriteKey(const Property& property) {
        std::string_view key = property.GetKeyText();
        if (m_options.indent > 0 || key.empty()) {
            WriteKey(property.GetName());
            return;
        }
        Level& level = m_levels.back();
        key.remove_prefix(level.empty ? 2 : 0); // the comma
        level.empty = false;
        m_out.Append(key);
    }

    void WriteKey(std::string_view name) {
        Separate();
        WriteText(name);
        m_out.Append(": ");
    }

    void WriteText(std::string_view text) {
        if (!AppendQuoted(m_out, text)) {
            Report("is not UTF-8 text");
        }
    }

    template <class T>
    static const T& As(const void* value) {
        return *static_cast<const T*>(value);
    }

    void WriteEnum(const EnumType& type, const void* value) {
        std::int32_t number = 0;
        std::memcpy(&number, value, sizeof(number));
        if (number >= 0 && static_cast<std::size_t>(number) < type.GetTags().size()) {
            AppendQuoted(m_out, type.GetTags()[static_cast<std::size_t>(number)]);
        } else {
            m_out.AppendNumber(number);
            ReportNoValue(type, number);
        }
    }

    void WriteDateTime(const Pellum::System::DateTime& value) {
        char* to = m_out.Reserve(Pellum::System::DateTime::kMostText + 2);
        *to++ = '"';
        to = value.Write(to);
        *to++ = '"';
        m_out.Commit(to);
        if (!value.HasPlainYear()) {
            Report("lies outside of the years 0001 to 9999");
        }
    }

    void WriteScalar(const Type& type, const void* value) {
        switch (type.GetKind()) {
        case TypeKind::Boolean: m_out.Append(As<bool>(value) ? kTrue : kFalse); break;
        case TypeKind::Byte: m_out.AppendNumber(As<signed char>(value)); break;
        case TypeKind::Int: m_out.AppendNumber(As<std::int32_t>(value)); break;
        case TypeKind::Long: m_out.AppendNumber(As<std::int64_t>(value)); break;
        case TypeKind::Float:
            if (!AppendFloat(m_out, As<float>(value))) {
                Report("is not a finite number");
            }
            break;
        case TypeKind::String: WriteText(As<std::string>(value)); break;
        case TypeKind::DateTime: WriteDateTime(As<Pellum::System::DateTime>(value)); break;
        case TypeKind::Binary: {
            const auto& bytes = As<std::vector<std::uint8_t>>(value);
            AppendBase64(m_out, bytes.data(), bytes.size());
            break;
        }
        case TypeKind::TypeName: WriteText(As<TypeName>(value).GetText()); break;
        case TypeKind::PropertyPath: WriteText(As<PropertyPath>(value).GetText()); break;
        case TypeKind::Enum: WriteEnum(static_cast<const EnumType&>(type), value); break;
        default: m_out.Append("null"); break;
        }
    }

    // What reports is kept out of what writes, which is short without it.

    [[gnu::noinline]] void Report(std::string_view what) {
        if (!m_failed) {
            m_failed = true;
            m_problem = {m_walker.GetPath(), std::string(what)};
        }
    }

    [[gnu::noinline]] void ReportVersion(const Type& type) {
        Report(
            std::string("is of type ") + type.GetName() + ", which version " + m_options.version->GetName()
            + " does not have");
    }

    [[gnu::noinline]] void ReportNoValue(const EnumType& type, std::int32_t number) {
        Report("holds " + std::to_string(number) + ", which is not a value of " + type.GetName());
    }

    void CheckReference(const MoRef& reference, const Type* declared) {
        if (const Type* type = reference._GetType()) {
            CheckVersion(*type);
            if (m_options.requireComplete && declared != nullptr && !type->IsA(declared)) {
                Report(std::string("refers to a ") + type->GetName() + ", expected a " + declared->GetName());
            }
        }
    }

    void CheckVersion(const Type& type) {
        if (!type.IsPartOf(m_options.version)) {
            ReportVersion(type);
        }
    }

    const PrintOptions& m_options;
    TextBuffer m_out;
    ValueWalker m_walker;
    std::vector<Level> m_levels;
    bool m_failed = false;
    PrintProblem m_problem;
};

} // namespace

std::string Print(const Any* value, const PrintOptions& options) {
    std::string out;
    JsonPrinter(options, out).Print(value);
    return out;
}

std::string Print(const OpenValue& value, const PrintOptions& options) {
    std::string out;
    JsonPrinter(options, out).Print(value);
    return out;
}

bool TryPrint(const Any* value, const PrintOptions& options, std::string& out, PrintProblem& problem) {
    JsonPrinter printer(options, out);
    printer.Print(value);
    if (printer.HasProblem()) {
        problem = printer.GetProblem();
        return false;
    }
    return true;
}

} // namespace Tavik
