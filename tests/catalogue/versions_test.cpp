#include "tavik/codec/json/json.h"
#include "tavik/value/validate.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"
#include "tests/catalogue/document.h"

#include <gmock/gmock.h>

/// What every version of the interface knows of every type.
namespace {

using namespace CatalogueTests;
using Pellum::Ref;
using Tavik::Any;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

void ForEachVersion(const std::function<void(std::size_t number, const Tavik::Version& version)>& check) {
    for (std::size_t number = 0; number < kVersionCount; ++number) {
        const Tavik::Version& version = GetVersion(number);
        SCOPED_TRACE(version.GetName());
        check(number, version);
    }
}

std::string DecodeFor(const Tavik::Version& version, const std::string& text, bool lenient = false) {
    Tavik::Json::DecodeOptions decode;
    decode.version = &version;
    decode.lenient = lenient;
    Tavik::Json::EncodeOptions encode;
    encode.version = &version;
    return Tavik::Json::Encode(Tavik::Json::Decode(text, decode).Get(), encode);
}

/// Why a text is refused; `expected` is borrowed.
std::string GetDecodeError(
    const Tavik::Version& version, const std::string& text, const Tavik::Type* expected = nullptr) {
    Tavik::Json::DecodeOptions options;
    options.version = &version;
    options.expectedType = expected;
    try {
        Tavik::Json::Decode(text, options);
    } catch (const Tavik::Json::DecodeError& error) {
        return error.GetReason();
    }
    return "none";
}

TEST(CatalogueVersions, TypesAndPropertiesArePartOfWhatFollowsTheirOwn) {
    ForEachVersion([](std::size_t number, const Tavik::Version& version) {
        for (const Tavik::Type* type : GetTypes()) {
            EXPECT_EQ(type->IsPartOf(&version), Has(number, type->GetInfo().version)) << type->GetName();
        }
        for (const Tavik::DataObjectType* type : GetDataTypes()) {
            for (const Tavik::Property& property : type->GetOwnProperties()) {
                EXPECT_EQ(property.IsPartOf(&version), Has(number, property.GetDescriptor().version))
                    << type->GetName() << '.' << property.GetName();
            }
        }
    });
}

TEST(CatalogueVersions, WriteWhatTheyHaveAndRefuseTheRest) {
    std::size_t written = 0;
    std::size_t refused = 0;
    ForEachObject([&](const Subject& subject) {
        ForEachVersion([&](std::size_t number, const Tavik::Version& version) {
            DocumentOptions expectedOptions;
            expectedOptions.version = number;
            ExpectedDocument expected(expectedOptions);
            const std::string text = expected.Write(*subject.object);
            Tavik::Json::EncodeOptions options;
            options.version = &version;
            const auto problems = Tavik::Validate(subject.object.Get(), &version);
            if (expected.GetRefusedType().empty()) {
                EXPECT_EQ(Tavik::Json::Encode(subject.object.Get(), options), text);
                EXPECT_EQ(DecodeFor(version, text), text);
                EXPECT_THAT(problems, IsEmpty());
                ++written;
                return;
            }
            ++refused;
            try {
                Tavik::Json::Encode(subject.object.Get(), options);
                ADD_FAILURE() << "wrote a " << expected.GetRefusedType();
            } catch (const Tavik::Json::EncodeError& error) {
                EXPECT_EQ(error.GetPath(), expected.GetRefusedPath());
                EXPECT_THAT(
                    error.what(), AllOf(HasSubstr(expected.GetRefusedType()), HasSubstr(version.GetName())));
            }
            ASSERT_THAT(problems, testing::Not(IsEmpty()));
            EXPECT_EQ(problems[0].path, expected.GetRefusedPath());
            EXPECT_THAT(problems[0].what, HasSubstr(expected.GetRefusedType()));
        });
    });
    EXPECT_GT(written, 10000U);
    EXPECT_GT(refused, 500U);
}

TEST(CatalogueVersions, RefuseToReadYoungerTypes) {
    std::size_t count = 0;
    ForEachObject(Fill::Least, [&](const Subject& subject) {
        Tavik::Json::EncodeOptions encode;
        encode.declaredType = &subject.type;
        const std::string named = Tavik::Json::Encode(subject.object.Get());
        const std::string unnamed = Tavik::Json::Encode(subject.object.Get(), encode);
        ForEachVersion([&](std::size_t number, const Tavik::Version& version) {
            if (Has(number, subject.type.GetInfo().version)) {
                return;
            }
            ++count;
            const auto tellsOfType = AllOf(
                HasSubstr(std::string("type ") + subject.type.GetWireName() + ' '),
                HasSubstr(version.GetName()), HasSubstr(subject.type.GetInfo().version));
            EXPECT_THAT(GetDecodeError(version, named), tellsOfType);
            EXPECT_THAT(GetDecodeError(version, unnamed, &subject.type), tellsOfType);
        });
    });
    EXPECT_GT(count, 100U);
}

TEST(CatalogueVersions, RefuseToReadYoungerProperties) {
    std::size_t count = 0;
    ForEachObject(Fill::All, [&](const Subject& subject) {
        ForEachVersion([&](std::size_t number, const Tavik::Version& version) {
            if (!Has(number, subject.type.GetInfo().version)) {
                return;
            }
            for (const Tavik::Property* property : subject.type.GetProperties()) {
                if (Has(number, property->GetDescriptor().version)) {
                    continue;
                }
                ++count;
                TestSupport::RandomObjects random(Fill::Least, subject.seed);
                const auto object = random.Make(subject.type);
                DocumentOptions options;
                options.version = number;
                const Members old = ExpectedDocument(options).WriteMembers(*object);
                Members young = old;
                young.insert(young.begin(), {property->GetName(), "null"});
                const std::string text = WriteLines(subject.type, young);
                EXPECT_THAT(
                    GetDecodeError(version, text),
                    AllOf(
                        HasSubstr(Quoted(property->GetName())), HasSubstr(property->GetOwner().GetWireName()),
                        HasSubstr(version.GetName()), HasSubstr(property->GetDescriptor().version)));
                EXPECT_EQ(DecodeFor(version, text, true), DecodeFor(version, WriteLines(subject.type, old)));
            }
        });
    });
    EXPECT_GT(count, 100U);
}

} // namespace
