#include "tavik/codec/json/json.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"
#include "tests/catalogue/document.h"

#include <gmock/gmock.h>

#include <algorithm>

/// What is told of wrong documents, for every property of every type.
namespace {

using namespace CatalogueTests;
using Tavik::Property;
using Tavik::TypeKind;
using testing::HasSubstr;

/// The line of the first member in a document of `WriteLines`.
constexpr std::size_t kFirstLine = 3;

/// Where something is wrong, and what must be told of it.
struct Expected {
    std::size_t line;
    std::size_t column;
    std::string path;
    std::vector<std::string> words;
};

void ExpectRefused(const std::string& text, const Expected& expected) {
    try {
        Tavik::Json::Decode(text);
        ADD_FAILURE() << "accepted: " << text;
    } catch (const Tavik::Json::DecodeError& error) {
        EXPECT_EQ(error.GetLine(), expected.line) << error.what() << '\n' << text;
        EXPECT_EQ(error.GetColumn(), expected.column) << error.what() << '\n' << text;
        EXPECT_EQ(error.GetPath(), expected.path) << error.what() << '\n' << text;
        for (const std::string& word : expected.words) {
            EXPECT_THAT(error.GetReason(), HasSubstr(word)) << text;
        }
        EXPECT_THAT(error.what(), testing::Not(HasSubstr(kSecretMark)));
    }
}

/// An object that is not finished is complained of at its closing brace.
Expected AtEnd(const Members& members, std::vector<std::string> words) {
    return {kFirstLine + members.size(), 1, "", std::move(words)};
}

/// Calls `check` with an object of every type that takes what it describes and nothing else; secrets are
/// marked.
void ForEachDescribed(Fill fill, const std::function<void(const Subject&)>& check) {
    ForEachObject(fill, [&](const Subject& subject) {
        if (!subject.type.IsOpen()) {
            MarkSecrets(*subject.object);
            check(subject);
        }
    });
}

/// Calls `check` for every property of every such type, with the members of a valid document: what is
/// required, without the property itself.
void ForEachProperty(const std::function<void(const Subject&, const Property&, Members)>& check) {
    ForEachDescribed(Fill::Least, [&](const Subject& subject) {
        const Members all = ExpectedDocument().WriteMembers(*subject.object);
        for (const Property* property : subject.type.GetProperties()) {
            SCOPED_TRACE(property->GetName());
            Members members = all;
            std::erase_if(members, [&](const Member& member) { return member.first == property->GetName(); });
            check(subject, *property, members);
        }
    });
}

/// Refuses `value` for a property that comes last; `offset` is how far into the value the error lies.
void ExpectValueRefused(
    const Subject& subject, const Property& property, Members members, const std::string& value,
    std::size_t offset, const std::string& pathEnd, std::vector<std::string> words) {
    SCOPED_TRACE(value);
    const std::string name = property.GetName();
    members.emplace_back(name, value);
    ExpectRefused(
        WriteLines(subject.type, members), {kFirstLine + members.size() - 1, Quoted(name).size() + 3 + offset,
                                            name + pathEnd, std::move(words)});
}

enum class Form { Boolean, Number, Text, Object, Array };

/// A value of some form, and how it is described.
struct WrongValue {
    Form form;
    const char* text;
    const char* found;
};

constexpr WrongValue kWrongValues[] = {
    {Form::Boolean, "true", "found a boolean"}, {Form::Number, "4711", "found a number"},
    {Form::Text, "\"wrong-text\"", "found"},    {Form::Object, "{}", "found an object"},
    {Form::Array, "[]", "found an array"},
};

/// What is said to be expected of a single value.
std::string DescribeExpected(const Tavik::Type& type) {
    switch (type.GetKind()) {
    case TypeKind::Boolean: return "expected true or false";
    case TypeKind::Byte: return "expected a byte";
    case TypeKind::Int: return "expected an int";
    case TypeKind::Long: return "expected a long";
    case TypeKind::Float: return "expected a float";
    case TypeKind::String: return "expected a string";
    case TypeKind::DateTime: return "expected a dateTime";
    case TypeKind::Binary: return "base64";
    case TypeKind::TypeName: return "wire name of a type";
    case TypeKind::PropertyPath: return "property path";
    case TypeKind::Any: return "\"$type\"";
    default: return type.GetWireName();
    }
}

/// Whether values of that form can be right for a single value of the type; what is inside is another matter.
bool MayTake(const Tavik::Type& type, Form form) {
    switch (type.GetKind()) {
    case TypeKind::Boolean: return form == Form::Boolean;
    case TypeKind::Byte:
    case TypeKind::Int:
    case TypeKind::Long:
    case TypeKind::Float: return form == Form::Number;
    case TypeKind::String:
    case TypeKind::TypeName:
    case TypeKind::PropertyPath: return form == Form::Text;
    case TypeKind::DateTime:
    case TypeKind::Binary:
    case TypeKind::Enum: return false; // the text above is none
    default: return form == Form::Object;
    }
}

TEST(CatalogueErrors, NameTheRequiredPropertyThatIsMissing) {
    std::size_t count = 0;
    ForEachProperty([&](const Subject& subject, const Property& property, const Members& members) {
        const std::string text = WriteLines(subject.type, members);
        if (property.IsOptional()) {
            EXPECT_NO_THROW(Tavik::Json::Decode(text));
            return;
        }
        ++count;
        const std::string reason = std::string(subject.type.GetWireName()) + " lacks the required "
                                 + (property.IsArray() ? "elements of " : "") + Quoted(property.GetName());
        const auto isLast = [&](const Members& all) {
            try {
                Tavik::Json::Decode(WriteLines(subject.type, all));
                ADD_FAILURE() << "accepted";
            } catch (const Tavik::Json::DecodeError& error) {
                EXPECT_EQ(error.GetReason(), reason);
                EXPECT_EQ(error.GetLine(), AtEnd(all, {}).line);
                EXPECT_EQ(error.GetColumn(), 1U);
            }
        };
        isLast(members);
        Members unset = members;
        unset.insert(unset.begin(), {property.GetName(), "null"});
        isLast(unset);
        if (property.IsArray()) {
            unset.front().second = property.GetType()->GetKind() == TypeKind::Byte ? "\"\"" : "[]";
            isLast(unset);
        }
    });
    EXPECT_GT(count, 500U);
}

TEST(CatalogueErrors, NameAllRequiredPropertiesThatAreMissing) {
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        SCOPED_TRACE(type->GetName());
        std::vector<std::string> words;
        for (const Property* property : type->GetProperties()) {
            if (!property->IsOptional()) {
                words.push_back(Quoted(property->GetName()));
            }
        }
        if (!words.empty()) {
            ExpectRefused(WriteLines(*type, {}), AtEnd({}, words));
        }
    }
}

TEST(CatalogueErrors, NameThePropertyOfAWrongKind) {
    ForEachProperty([](const Subject& subject, const Property& property, const Members& members) {
        const Tavik::Type& type = *property.GetType();
        const bool isBytes = property.IsArray() && type.GetKind() == TypeKind::Byte;
        for (const WrongValue& wrong : kWrongValues) {
            if (property.IsArray() ? !isBytes && wrong.form == Form::Array : MayTake(type, wrong.form)) {
                continue;
            }
            const std::string expected = isBytes ? "base64"
                                       : property.IsArray()
                                           ? std::string("expected an array of ") + type.GetWireName()
                                           : DescribeExpected(type);
            ExpectValueRefused(subject, property, members, wrong.text, 0, "", {expected, wrong.found});
        }
        for (const WrongValue& wrong : kWrongValues) {
            if (property.IsArray() && !isBytes && !MayTake(type, wrong.form)) {
                ExpectValueRefused(
                    subject, property, members, std::string("[") + wrong.text + ']', 1, "[0]",
                    {DescribeExpected(type), wrong.found});
            }
        }
    });
}

TEST(CatalogueErrors, NameThePropertyWithAnotherType) {
    std::size_t number = 0;
    ForEachProperty([&](const Subject& subject, const Property& property, const Members& members) {
        const Tavik::Type& type = *property.GetType();
        const bool isObject = type.GetKind() == TypeKind::Data || type.GetKind() == TypeKind::Fault;
        if (!isObject && type.GetKind() != TypeKind::Managed) {
            return;
        }
        const std::string other = GetUnrelatedType(type, number += 7).GetWireName();
        const std::string key = isObject ? "\"$type\"" : "\"mo\"";
        const std::string value = '{' + key + ": " + Quoted(other) + '}';
        const std::size_t offset = key.size() + 3;
        if (property.IsArray()) {
            ExpectValueRefused(
                subject, property, members, '[' + value + ']', offset + 1, "[0]",
                {type.GetWireName(), other});
        } else {
            ExpectValueRefused(subject, property, members, value, offset, "", {type.GetWireName(), other});
        }
    });
}

TEST(CatalogueErrors, NameThePropertyThatComesTwice) {
    ForEachDescribed(Fill::All, [](const Subject& subject) {
        const Members members = ExpectedDocument().WriteMembers(*subject.object);
        for (const Member& member : members) {
            Members twice = members;
            twice.push_back(member);
            ExpectRefused(
                WriteLines(subject.type, twice),
                {kFirstLine + members.size(), 1, "", {"second member " + Quoted(member.first)}});
        }
    });
}

TEST(CatalogueErrors, NameThePropertyThatIsUnknown) {
    ForEachDescribed(Fill::Least, [](const Subject& subject) {
        const Members members = ExpectedDocument().WriteMembers(*subject.object);
        for (const std::string name : {"noSuchProperty", "", "Name", "$type2"}) {
            Members more = members;
            more.emplace_back(name, "[{\"a\": [null]}]");
            const std::string text = WriteLines(subject.type, more);
            ExpectRefused(
                text, {kFirstLine + members.size(), 1, "", {subject.type.GetWireName(), Quoted(name)}});
            Tavik::Json::DecodeOptions lenient;
            lenient.lenient = true;
            EXPECT_THAT(
                FindDifferences(Tavik::Json::Decode(text, lenient).Get(), subject.object.Get()),
                testing::IsEmpty());
        }
    });
}

} // namespace
