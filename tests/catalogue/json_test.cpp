#include "tavik/codec/json/json.h"
#include "tavik/value/print.h"
#include "tavik/value/validate.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"
#include "tests/catalogue/document.h"

#include <gmock/gmock.h>

/// Objects of every type as JSON.
namespace {

using namespace CatalogueTests;
using Pellum::Ref;
using Tavik::Any;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::size_t CountOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(CatalogueJson, WritesWhatTheDescriptorsSay) {
    ForEachObject([](const Subject& subject) {
        EXPECT_EQ(Tavik::Json::Encode(subject.object.Get()), ExpectedDocument().Write(*subject.object));
    });
}

TEST(CatalogueJson, ReadsBackWhatItWrote) {
    ForEachObject([](const Subject& subject) {
        for (const int indent : {0, 3}) {
            Tavik::Json::EncodeOptions options;
            options.indent = indent;
            const std::string text = Tavik::Json::Encode(subject.object.Get(), options);
            const Ref<Any> back = Tavik::Json::Decode(text);
            EXPECT_THAT(FindDifferences(subject.object.Get(), back.Get()), IsEmpty());
            EXPECT_TRUE(subject.object->_IsEqual(back.Get(), false));
            EXPECT_EQ(Tavik::Json::Encode(back.Get(), options), text);
        }
    });
}

TEST(CatalogueJson, ReadsMembersInAnyOrder) {
    ForEachObject(Fill::All, [](const Subject& subject) {
        if (subject.type.IsOpen()) {
            return;
        }
        Members members = ExpectedDocument().WriteMembers(*subject.object);
        std::reverse(members.begin(), members.end());
        const Ref<Any> back = Tavik::Json::Decode(WriteLines(subject.type, members));
        EXPECT_THAT(FindDifferences(subject.object.Get(), back.Get()), IsEmpty());
    });
}

TEST(CatalogueJson, LeavesOutTheTypeThatIsDeclared) {
    ForEachObject(Fill::Least, [](const Subject& subject) {
        Tavik::Json::EncodeOptions options;
        options.declaredType = &subject.type;
        const std::string text = Tavik::Json::Encode(subject.object.Get(), options);
        EXPECT_THAT(text, Not(HasSubstr(std::string("{\"$type\": \"") + subject.type.GetWireName() + '"')));
        Tavik::Json::DecodeOptions decode;
        decode.expectedType = &subject.type;
        const Ref<Any> back = Tavik::Json::Decode(text, decode);
        EXPECT_THAT(FindDifferences(subject.object.Get(), back.Get()), IsEmpty());
    });
}

TEST(CatalogueJson, ShowsSecretsToPeersOnly) {
    int total = 0;
    ForEachObject([&](const Subject& subject) {
        const int count = MarkSecrets(*subject.object);
        total += count;
        const std::string encoded = Tavik::Json::Encode(subject.object.Get());
        EXPECT_EQ(CountOf(encoded, kSecretMark), static_cast<std::size_t>(count));
        DocumentOptions hidden;
        hidden.showSecrets = false;
        const std::string shown = subject.object->ToString();
        EXPECT_THAT(shown, Not(HasSubstr(kSecretMark)));
        EXPECT_EQ(CountOf(shown, "\"***\""), static_cast<std::size_t>(count));
        EXPECT_EQ(shown, ExpectedDocument(hidden).Write(*subject.object));
        Tavik::PrintOptions print;
        print.indent = 2;
        EXPECT_THAT(Tavik::Print(subject.object.Get(), print), Not(HasSubstr(kSecretMark)));
    });
    EXPECT_GT(total, 200);
}

TEST(CatalogueJson, ShowsNoSecretThatCanNotBeWritten) {
    ForEachObject(Fill::All, [&](const Subject& subject) {
        for (const Tavik::Property* property : subject.type.GetProperties()) {
            if ((property->GetFlags() & Tavik::kSecretFlag) == 0) {
                continue;
            }
            const Ref<Tavik::DataObject> broken = Clone(*subject.object);
            const std::string text = std::string(kSecretMark) + '\xFF';
            property->Set(broken.Get(), &text);
            EXPECT_THAT(broken->ToString(), Not(HasSubstr(kSecretMark)));
            const auto problems = Tavik::Validate(broken.Get());
            ASSERT_EQ(problems.size(), 1U);
            EXPECT_EQ(problems[0].path, property->GetName());
            EXPECT_THAT(problems[0].what, Not(HasSubstr(kSecretMark)));
            try {
                Tavik::Json::Encode(broken.Get());
                ADD_FAILURE() << property->GetName();
            } catch (const Tavik::Json::EncodeError& error) {
                EXPECT_EQ(error.GetPath(), property->GetName());
                EXPECT_THAT(error.what(), Not(HasSubstr(kSecretMark)));
            }
        }
    });
}

TEST(CatalogueJson, ShowsNoSecretsInErrors) {
    ForEachObject([](const Subject& subject) {
        MarkSecrets(*subject.object);
        const std::string text = Tavik::Json::Encode(subject.object.Get());
        // Cut off behind a secret, inside of it and in front of it.
        for (std::size_t at = text.find(kSecretMark); at != std::string::npos;
             at = text.find(kSecretMark, at + 1)) {
            for (const std::size_t end : {at, at + kSecretMark.size(), text.find('"', at) + 1}) {
                for (const char* wrong : {"", "\x01", " 4711"}) {
                    try {
                        Tavik::Json::Decode(text.substr(0, end) + wrong);
                        ADD_FAILURE() << "accepted";
                    } catch (const Tavik::Json::DecodeError& error) {
                        EXPECT_THAT(error.what(), Not(HasSubstr(kSecretMark)));
                    }
                }
            }
        }
    });
}

} // namespace
