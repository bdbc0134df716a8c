#include "schemac/emit/accessors.h"

#include "schemac/emit/cpp_types.h"
#include "schemac/model/naming.h"

namespace Schemac::Emit {

namespace {

using Naming::Accessor;

/// The pieces that all accessors of one property are made of.
class Writer {
public:
    Writer(const Model::Property& property, const Model::DataType& owner)
        : m_property(property),
          m_owner(owner),
          m_value(ElementType(property)),
          m_member(Naming::MemberName(property.name)) {}

    std::vector<AccessorText> Write() {
        switch (FormOf(m_property)) {
        case Form::Value: WriteRequired(m_value, m_value); break;
        case Form::Text: WriteRequired("const " + m_value + "&", "const " + m_value + "&"); break;
        case Form::Optional: WriteOptional(); break;
        case Form::Object: WriteObject(); break;
        case Form::Array: WriteArray(); break;
        }
        return std::move(m_accessors);
    }

private:
    void Add(
        Accessor accessor, std::string result, std::string parameters, std::string body,
        bool isInline = true) {
        m_accessors.push_back(
            {std::move(result), Naming::AccessorName(accessor, m_property.name, m_owner),
             std::move(parameters), std::move(body), isInline});
    }

    Accessor Reader() const {
        return m_property.type->Is(Model::BuiltinKind::Boolean) ? Accessor::Is : Accessor::Get;
    }

    void WriteRequired(const std::string& result, const std::string& parameter) {
        Add(Reader(), result, "() const", "return " + m_member + ";");
        Add(Accessor::Peek, "const " + m_value + "*", "() const", "return &" + m_member + ";");
        Add(Accessor::Set, "void", "(" + parameter + " value)", m_member + " = value;");
        Add(Accessor::Swap, "void", "(" + m_value + "* other)", "std::swap(" + m_member + ", *other);");
    }

    void WriteOptional() {
        const std::string optional = "Pellum::Optional<" + m_value + ">";
        Add(Reader(), "const " + optional + "&", "() const", "return " + m_member + ";");
        Add(Reader(), "bool", "(" + m_value + "& out) const",
            "return Morvane::Support::GetOptional(" + m_member + ", out);");
        Add(Accessor::Peek, "const " + m_value + "*", "() const", "return " + m_member + ".Peek();");
        Add(Accessor::Set, "void", "(const " + optional + "& value)", m_member + " = value;");
        Add(Accessor::Swap, "void", "(" + optional + "* other)", m_member + ".Swap(*other);");
        Add(Accessor::Unset, "void", "()", m_member + ".Unset();");
    }

    void WriteObject() {
        Add(Accessor::Get, m_value + "*", "()", "return " + m_member + ".Get();");
        Add(Accessor::Get, "const " + m_value + "*", "() const", "return " + m_member + ".Get();");
        Add(Accessor::Peek, "const " + m_value + "*", "() const", "return " + m_member + ".Get();");
        WriteCountedSetters(m_value, false); // the class may be only declared
    }

    void WriteArray() {
        const std::string array = ArrayType(m_property);
        Add(Accessor::Get, array + "*", "()", "return Morvane::Support::GetOrCreateArray(" + m_member + ");",
            false);
        Add(Accessor::Get, "const " + array + "*", "() const",
            "return const_cast<" + m_owner.classPath.back() + "*>(this)->"
                + Naming::AccessorName(Accessor::Get, m_property.name, m_owner) + "();");
        Add(Accessor::GetPtr, array + "*", "()", "return " + m_member + ".Get();");
        Add(Accessor::GetPtr, "const " + array + "*", "() const", "return " + m_member + ".Get();");
        Add(Accessor::Peek, "const " + array + "*", "() const",
            "return Morvane::Support::PeekArray(" + m_member + ");");
        Add(Accessor::IsSet, "bool", "() const",
            "return Morvane::Support::PeekArray(" + m_member + ") != nullptr;");
        WriteCountedSetters(array, true);
    }

    void WriteCountedSetters(const std::string& target, bool isComplete) {
        Add(Accessor::Set, "void", "(" + target + "* value)", m_member + ".Reset(value);", isComplete);
        Add(Accessor::Swap, "void", "(Pellum::Ref<" + target + ">* other)", m_member + ".Swap(*other);");
    }

    const Model::Property& m_property;
    const Model::DataType& m_owner;
    const std::string m_value;
    const std::string m_member;
    std::vector<AccessorText> m_accessors;
};

} // namespace

std::vector<AccessorText> AccessorsOf(const Model::Property& property, const Model::DataType& owner) {
    return Writer(property, owner).Write();
}

} // namespace Schemac::Emit
