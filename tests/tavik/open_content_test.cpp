#include "tavik/value/open_content.h"

#include "pellum/error/exception.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/compare.h"
#include "tavik/value/open_writer.h"
#include "tavik/value/print.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/secret_names.h"
#include "tavik/value/validate.h"
#include "tests/sample/api/bag.h"
#include "tests/sample/api/bag_broken.h"
#include "tests/sample/api/bag_holder.h"
#include "tests/sample/api/bag_lost.h"
#include "tests/sample/api/bag_torn.h"
#include "tests/sample/api/big_bag.h"
#include "tests/sample/api/labelled_bag.h"
#include "tests/sample/api/open_point.h"
#include "tests/support/small_stack.h"

#include <gmock/gmock.h>

#include <functional>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Tavik::OpenContent;
using Tavik::OpenContentWriter;
using Tavik::OpenKind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Write = std::function<void(OpenContentWriter&)>;

OpenContent Make(const Write& write) {
    OpenContent content;
    OpenContentWriter writer(content);
    write(writer);
    return content;
}

/// The content of a document's members.
OpenContent Read(const std::string& members) {
    return Tavik::Json::DecodeAs<Sample::Bag>('{' + members + '}')->_GetContent();
}

/// {"name": "box", "size": 1.50, "lid": null, "part": [{"id": 1, "on": true}, [], {}]}
void WriteBox(OpenContentWriter& writer) {
    EXPECT_TRUE(writer.Name("name"));
    writer.String("box");
    EXPECT_TRUE(writer.Name("size"));
    writer.Number("1.50");
    EXPECT_TRUE(writer.Name("lid"));
    writer.Null();
    EXPECT_TRUE(writer.Name("part"));
    writer.BeginArray();
    writer.BeginObject();
    EXPECT_TRUE(writer.Name("id"));
    writer.Number("1");
    EXPECT_TRUE(writer.Name("on"));
    writer.Boolean(true);
    writer.EndObject();
    writer.BeginArray();
    writer.EndArray();
    writer.BeginObject();
    writer.EndObject();
    writer.EndArray();
}

constexpr const char* kBoxText =
    R"("name": "box", "size": 1.50, "lid": null, "part": [{"id": 1, "on": true}, [], {}])";

std::string Print(const OpenContent& content) {
    const auto bag = MakeRef<Sample::Bag>();
    bag->_GetContent() = content;
    Tavik::PrintOptions options;
    options.showSecrets = true;
    const std::string front = R"({"$type": "SampleBag")";
    const std::string text = Tavik::Print(bag.Get(), options);
    EXPECT_TRUE(text.starts_with(front));
    const std::size_t skipped = front.size() + (content.IsEmpty() ? 0 : 2);
    return text.substr(skipped, text.size() - skipped - 1);
}

std::vector<std::string> DiffContent(
    const Tavik::Any& a, const Tavik::Any& b, const std::string& prefix = "") {
    Tavik::PropertyDiffSet diffs;
    Tavik::DiffAnyPropertiesInt(&a, &b, prefix, "", 0, diffs);
    return {diffs.begin(), diffs.end()};
}

std::vector<std::string> DiffContent(
    const OpenContent& a, const OpenContent& b, const std::string& prefix = "") {
    Tavik::PropertyDiffSet diffs;
    a.Diff(b, prefix, diffs);
    return {diffs.begin(), diffs.end()};
}

TEST(OpenContent, IsReadAsItWasWritten) {
    const OpenContent box = Make(WriteBox);
    EXPECT_EQ(Print(box), kBoxText);
    std::vector<std::string> names;
    for (const Tavik::OpenItem item : box) {
        names.emplace_back(item.name);
    }
    EXPECT_THAT(names, ElementsAre("name", "size", "lid", "part"));
    EXPECT_EQ(box.Find("size")->GetText(), "1.50");
    EXPECT_TRUE(box.Find("lid")->IsNull());
    EXPECT_FALSE(box.Find("id"));
    const auto part = box.Find("part");
    ASSERT_TRUE(part);
    EXPECT_EQ(part->GetKind(), OpenKind::Array);
    EXPECT_EQ(part->GetCount(), 3U);
    EXPECT_FALSE(part->HoldsOnlyScalars());
    std::vector<OpenKind> kinds;
    for (const Tavik::OpenItem item : part->GetItems()) {
        EXPECT_THAT(item.name, IsEmpty());
        kinds.push_back(item.value.GetKind());
    }
    EXPECT_THAT(kinds, ElementsAre(OpenKind::Object, OpenKind::Array, OpenKind::Object));
    EXPECT_EQ((*part->GetItems().begin()).value.Find("on")->GetText(), "true");
    EXPECT_FALSE(part->Find("on"));
}

TEST(OpenContent, ChangesOnePropertyAndLeavesTheOthers) {
    OpenContent box = Make(WriteBox);
    box.SetText("name", "another");
    box.SetNumber("lid", "-2e9");
    box.SetBoolean("new", false);
    EXPECT_TRUE(box.Remove("size"));
    EXPECT_FALSE(box.Remove("size"));
    EXPECT_EQ(
        Print(box),
        R"("name": "another", "lid": -2e9, "part": [{"id": 1, "on": true}, [], {}], "new": false)");
    // Texts of the content itself, and what stands behind a part that was replaced.
    box.SetText("name", box.Find("lid")->GetText());
    box.SetNull("part");
    box.SetNumber("new", std::int64_t{-9'223'372'036'854'775'807});
    EXPECT_EQ(Print(box), R"("name": "-2e9", "lid": -2e9, "part": null, "new": -9223372036854775807)");
    box.Clear();
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_EQ(Print(box), "");
}

TEST(OpenContent, TakesNumbersOnly) {
    OpenContent content;
    for (const char* number :
         {"0", "-0", "10", "1.0", "0.5e-3", "1E+2", "123456789012345678901234567890.1"}) {
        content.SetNumber("n", number);
        EXPECT_EQ(content.Find("n")->GetText(), number);
    }
    for (const char* text : {"", "-", "+1", "01", "1.", ".5", "1e", "1e+", "0x1", "1 ", " 1", "NaN", "1,5"}) {
        EXPECT_THROW(content.SetNumber("n", text), Pellum::Exception) << text;
    }
    EXPECT_EQ(content.Find("n")->GetText(), "123456789012345678901234567890.1");
}

TEST(OpenContentWriter, RefusesWhatDoesNotFit) {
    const Write misuses[] = {
        [](OpenContentWriter& writer) { writer.Null(); },
        [](OpenContentWriter& writer) { writer.BeginObject(); },
        [](OpenContentWriter& writer) { writer.EndObject(); },
        [](OpenContentWriter& writer) { writer.EndArray(); },
        [](OpenContentWriter& writer) {
            EXPECT_TRUE(writer.Name("a"));
            (void)writer.Name("b");
        },
        [](OpenContentWriter& writer) {
            EXPECT_TRUE(writer.Name("a"));
            writer.Number("one");
        },
        [](OpenContentWriter& writer) {
            EXPECT_TRUE(writer.Name("a"));
            writer.BeginArray();
            (void)writer.Name("b");
        },
        [](OpenContentWriter& writer) {
            EXPECT_TRUE(writer.Name("a"));
            writer.BeginArray();
            writer.EndObject();
        },
        [](OpenContentWriter& writer) {
            EXPECT_TRUE(writer.Name("a"));
            writer.BeginObject();
            EXPECT_TRUE(writer.Name("b"));
            writer.EndObject();
        },
    };
    for (const Write& misuse : misuses) {
        OpenContent content = Make(WriteBox);
        EXPECT_THROW(
            {
                OpenContentWriter writer(content);
                misuse(writer);
            },
            Pellum::Exception);
        EXPECT_EQ(Print(content), kBoxText); // and nothing of what was begun
    }
}

TEST(OpenContentWriter, RefusesASecondMemberInTheSameObjectOnly) {
    OpenContent content = Make(WriteBox);
    OpenContentWriter writer(content);
    EXPECT_FALSE(writer.Name("size"));
    EXPECT_TRUE(writer.Name("inner"));
    EXPECT_EQ(writer.GetPath(), "inner");
    writer.BeginObject();
    EXPECT_TRUE(writer.Name("size"));
    writer.BeginArray();
    writer.Null();
    EXPECT_EQ(writer.GetPath(), "inner.size[1]");
    writer.EndArray();
    EXPECT_FALSE(writer.Name("size"));
    EXPECT_EQ(writer.GetPath(), "inner");
    EXPECT_TRUE(writer.Name("two words"));
    EXPECT_EQ(writer.GetPath(), "inner.\"two words\"");
    writer.Null();
    EXPECT_FALSE(writer.IsComplete());
    writer.EndObject();
    EXPECT_TRUE(writer.IsComplete());
    EXPECT_FALSE(writer.Name("inner"));
}

/// Two contents, and what tells them apart.
struct ComparisonCase {
    const char* a;
    const char* b;
    std::vector<std::string> diffs;
    bool matches; ///< `a` the pattern `b`
};

TEST(OpenContent, ComparesByNameAndByPosition) {
    const ComparisonCase cases[] = {
        {"", "", {}, true},
        {R"("a": 1, "b": 2)", R"("b": 2, "a": 1)", {}, true},
        {R"("a": 1, "b": 2)", R"("b": 2, "a": 3)", {".a"}, false},
        {R"("a": 1, "b": 2)", R"("b": 2)", {".a"}, true},
        {R"("b": 2)", R"("a": 1, "b": 2)", {".a"}, false},
        {R"("a": 1)", R"("b": 1)", {".a", ".b"}, false},
        {R"("a": 1)", R"("a": 1.0)", {".a"}, false},
        {R"("c": 1, "a": 1, "b": 1)", R"("a": 2, "b": 2, "c": 2, "d": 2)", {".c", ".a", ".b", ".d"}, false},
        {R"("a": "1")", R"("a": 1)", {".a"}, false},
        {R"("a": "null")", R"("a": null)", {".a"}, false},
        {R"("a": true)", R"("a": false)", {".a"}, false},
        {R"("a": null)", R"("a": null)", {}, true},
        {R"("a": null)", "", {".a"}, true},
        {"", R"("a": null)", {".a"}, false},
        {R"("o": {"a": 1, "b": 2})", R"("o": {"b": 3})", {".o.a", ".o.b"}, false},
        {R"("o": {"a": 1, "b": 2})", R"("o": {"b": 2})", {".o.a"}, true},
        {R"("o": {"a": 1})", R"("o": {})", {".o.a"}, true},
        {R"("o": {})", R"("o": 1)", {".o"}, false},
        {R"("two words": {"": {"a.b": 1}})",
         R"("two words": {"": {"a.b": 2}})",
         {".\"two words\".\"\".\"a.b\""},
         false},
        {R"("l": [1, 2, {"x": 3}])", R"("l": [1, 2, {"x": 3}])", {}, true},
        {R"("l": [1, 2, {"x": 3}])", R"("l": [1, 2, {"x": 4}])", {".l[2].x"}, false},
        {R"("l": [1, 2, {"x": 3}, 4, 5])", R"("l": [1, 2, {"x": 3}])", {".l[3]", ".l[4]"}, false},
        {R"("l": [1])", R"("l": [1, 2, {"x": 3}])", {".l[1]", ".l[2]"}, false},
        {R"("l": [])", R"("l": {})", {".l"}, false},
    };
    for (const ComparisonCase& test : cases) {
        SCOPED_TRACE(std::string(test.a) + " and " + test.b);
        const OpenContent a = Read(test.a);
        const OpenContent b = Read(test.b);
        EXPECT_EQ(a.IsEqual(b, false), test.diffs.empty());
        EXPECT_EQ(b.IsEqual(a, false), test.diffs.empty());
        EXPECT_EQ(a.IsEqual(b, true), test.matches);
        EXPECT_EQ(DiffContent(a, b), test.diffs);
    }
    EXPECT_THAT(DiffContent(Read(R"("a": 1)"), Read(""), "config"), ElementsAre("config.a"));
}

// Comparing each property with each would run into the time limit of tests.
TEST(OpenContent, OfManyPropertiesInAnotherOrderIsComparedSoon) {
    constexpr int kCount = 200'000;
    OpenContent up;
    OpenContent down;
    {
        OpenContentWriter upWriter(up);
        OpenContentWriter downWriter(down);
        for (int i = 0; i < kCount; ++i) {
            EXPECT_TRUE(upWriter.Name("property" + std::to_string(i)));
            upWriter.Number(std::to_string(i));
            EXPECT_TRUE(downWriter.Name("property" + std::to_string(kCount - 1 - i)));
            downWriter.Number(std::to_string(kCount - 1 - i));
        }
    }
    EXPECT_TRUE(up.IsEqual(down, false));
    EXPECT_TRUE(up.IsEqual(down, true));
    EXPECT_THAT(DiffContent(up, down), IsEmpty());
    down.SetNumber("property77", "1");
    EXPECT_FALSE(up.IsEqual(down, true));
    EXPECT_THAT(DiffContent(up, down), ElementsAre(".property77"));
}

TEST(OpenContent, OfAnyDepthNeedsLittleStack) {
    TestSupport::RunOnSmallStack([] {
        constexpr int kContentDepth = 100'000;
        const auto make = [](const char* end) {
            auto bag = MakeRef<Sample::Bag>();
            OpenContentWriter writer(bag->_GetContent());
            EXPECT_TRUE(writer.Name("a"));
            for (int i = 0; i < kContentDepth; ++i) {
                if (i % 2 == 0) {
                    writer.BeginArray();
                } else {
                    writer.BeginObject();
                    EXPECT_TRUE(writer.Name("a"));
                }
            }
            writer.String(end);
            for (int i = kContentDepth; i-- > 0;) {
                i % 2 == 0 ? writer.EndArray() : writer.EndObject();
            }
            EXPECT_TRUE(writer.IsComplete());
            return bag;
        };
        const Ref<Sample::Bag> bag = make("end");
        const Ref<Sample::Bag> clone(bag->_Clone());
        const Ref<Sample::Bag> other = make("another end");
        EXPECT_TRUE(bag->_IsEqual(clone.Get(), false));
        EXPECT_FALSE(bag->_IsEqual(other.Get(), true));
        const std::vector<std::string> diffs = DiffContent(*bag, *other);
        ASSERT_EQ(diffs.size(), 1U);
        EXPECT_EQ(diffs[0].size(), kContentDepth / 2 * 5 + 2);
        EXPECT_THAT(bag->ToString(), HasSubstr("\"end\""));
        EXPECT_THAT(Tavik::Validate(bag.Get()), IsEmpty());
    });
}

/// Objects of every open class, each with `WriteBox` as its content.
std::vector<Ref<Tavik::DataObject>> MakeOfEveryClass() {
    Tavik::TypeRegistry::Instance().Load();
    const auto label = MakeRef<Sample::LabelledBag>();
    label->SetLabel("l");
    const auto lost = MakeRef<Sample::BagLost>();
    lost->SetWhere("there");
    std::vector<Ref<Tavik::DataObject>> objects{
        Ref<Tavik::DataObject>(new Sample::Bag),
        Ref<Tavik::DataObject>(new Sample::BigBag),
        Ref<Tavik::DataObject>(label.Get()),
        Ref<Tavik::DataObject>(new Sample::OpenPoint),
        Ref<Tavik::DataObject>(new Sample::BagBroken),
        Ref<Tavik::DataObject>(new Sample::BagTorn),
        Ref<Tavik::DataObject>(lost.Get())};
    for (const auto& object : objects) {
        OpenContentWriter writer(*object->_GetDataType()->GetOpenContent(*object));
        WriteBox(writer);
    }
    return objects;
}

TEST(OpenObject, OfEveryClassTakesItsContentAlong) {
    for (const Ref<Tavik::DataObject>& object : MakeOfEveryClass()) {
        const Tavik::DataObjectType& type = *object->_GetDataType();
        SCOPED_TRACE(type.GetName());
        EXPECT_TRUE(type.IsOpen());
        EXPECT_EQ(type.GetDataTypeInfo().reserved, 0U);
        EXPECT_THAT(object->ToString(), HasSubstr(std::string(kBoxText) + "}"));
        const Ref<Tavik::DataObject> clone(static_cast<Tavik::DataObject*>(object->_Clone()));
        EXPECT_TRUE(object->_IsEqual(clone.Get(), false));
        OpenContent& content = *type.GetOpenContent(*clone);
        content.SetText("name", "changed");
        EXPECT_THAT(object->ToString(), HasSubstr(kBoxText));
        EXPECT_FALSE(object->_IsEqual(clone.Get(), false));
        EXPECT_FALSE(object->_IsEqual(clone.Get(), true));
        EXPECT_THAT(DiffContent(*object, *clone, "fault"), ElementsAre("fault.name"));
        EXPECT_TRUE(content.Remove("name"));
        EXPECT_FALSE(object->_IsEqual(clone.Get(), false));
        EXPECT_TRUE(object->_IsEqual(clone.Get(), true));
        EXPECT_FALSE(clone->_IsEqual(object.Get(), true));
    }
    EXPECT_FALSE(Tavik::GetDoType<Sample::BagHolder>()->IsOpen());
    EXPECT_EQ(Tavik::GetDoType<Sample::Point>()->GetOpenContent(*MakeRef<Sample::Point>()), nullptr);
}

TEST(OpenObject, ComparesWhatIsDescribedToo) {
    const auto a = MakeRef<Sample::OpenPoint>();
    const auto b = MakeRef<Sample::OpenPoint>();
    a->_GetContent().SetNull("n");
    b->SetX(1);
    EXPECT_THAT(DiffContent(*a, *b), ElementsAre(".x", ".n"));
    b->_GetContent().SetNull("n");
    EXPECT_FALSE(a->_IsEqual(b.Get(), false));
}

TEST(OpenObject, HidesSecretsByTheirNames) {
    const struct {
        const char* name;
        bool isSecret;
    } names[] = {
        {"password", true},
        {"guestPassword", true},
        {"PASSWD", true},
        {"passPhrase", true},
        {"clientSecret", true},
        {"privateKey", true},
        {"private_key", true},
        {"Private-Key-PEM", true},
        {"accessTokens", true},
        {"set-cookie", true},
        {"Credentials", true},
        {"sessionId", true},
        {"SESSION_ID", true},
        {"pass word", true},
        {"passed", false},
        {"publicKey", false},
        {"key", false},
        {"session", false},
        {"tok", false},
        {"", false},
        {"p\xC3\xA4ssword", false},
        {"sessionKeyId", false},
    };

    for (const auto& row : names) {
        EXPECT_EQ(Tavik::IsSecretName(row.name), row.isSecret) << row.name;
        const auto bag = MakeRef<Sample::Bag>();
        bag->_GetContent() = Read('"' + std::string(row.name) + R"(": {"a": "sesame"})");
        EXPECT_EQ(bag->ToString().find("sesame") == std::string::npos, row.isSecret) << row.name;
        EXPECT_EQ(bag->ToString().find("\"***\"") != std::string::npos, row.isSecret) << row.name;
    }
}

TEST(OpenObject, HidesSecretsAtAnyDepth) {
    const auto holder = MakeRef<Sample::BagHolder>();
    holder->SetBag(new Sample::Bag);
    holder->GetBag()->_GetContent() = Read(R"("users": [{"token": ["sesame"]}, {"name": ["sesame"]}])");
    EXPECT_EQ(
        holder->ToString(),
        R"({"$type": "SampleBagHolder", "bag": {"users": [{"token": "***"}, {"name": ["sesame"]}]}})");
    Tavik::PrintOptions options;
    options.showSecrets = true;
    EXPECT_THAT(Tavik::Print(holder.Get(), options), HasSubstr(R"({"token": ["sesame"]})"));
    const Tavik::OpenValue users = *holder->GetBag()->_GetContent().Find("users");
    EXPECT_EQ(Tavik::Print(users), R"([{"token": "***"}, {"name": ["sesame"]}])");
}

TEST(OpenObject, IsPrintedOverSeveralLines) {
    const auto bag = MakeRef<Sample::Bag>();
    bag->_GetContent() = Read(R"("list": [1, 2, {"x": 3}], "flat": [1, null], "none": {})");
    Tavik::PrintOptions options;
    options.indent = 2;
    EXPECT_EQ(Tavik::Print(bag.Get(), options), R"({
  "$type": "SampleBag",
  "list": [
    1,
    2,
    {
      "x": 3
    }
  ],
  "flat": [1, null],
  "none": {}
})");
}

TEST(OpenObject, IsValidatedInside) {
    const auto holder = MakeRef<Sample::BagHolder>();
    const auto bag = MakeRef<Sample::LabelledBag>();
    bag->SetLabel("l");
    holder->SetBag(bag.Get());
    bag->_GetContent() = Make([](OpenContentWriter& writer) {
        EXPECT_TRUE(writer.Name("label"));
        writer.BeginObject();
        EXPECT_TRUE(writer.Name("label")); // the inner one is nobody's
        writer.Number("1");
        writer.EndObject();
        EXPECT_TRUE(writer.Name("$type"));
        writer.Null();
        EXPECT_TRUE(writer.Name("texts"));
        writer.BeginArray();
        writer.String("good");
        writer.String("bad \xFF");
        writer.EndArray();
        EXPECT_TRUE(writer.Name("\xC3("));
        writer.Null();
    });
    std::vector<std::string> problems;
    for (const Tavik::Problem& problem : Tavik::Validate(holder.Get())) {
        problems.push_back(problem.path + ": " + problem.what);
    }
    const std::string taken = ": has the name of a described member of its object";
    EXPECT_THAT(
        problems, ElementsAre(
                      "bag.label" + taken, "bag.$type" + taken, "bag.texts[1]: is not UTF-8 text",
                      "bag.\"\xEF\xBF\xBD(\": is not UTF-8 text"));
    std::string out;
    Tavik::PrintProblem problem;
    EXPECT_FALSE(Tavik::TryPrint(holder.Get(), {}, out, problem));
    EXPECT_EQ(problem.path, "bag.label");
}

} // namespace
