#include "tavik/codec/json/message_codec.h"
#include "tavik/managed/managed_method.h"
#include "tavik/value/data_array.h"
#include "tavik/value/primitive.h"
#include "tests/rpc/desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::Not;

const Tavik::Json::MessageCodec kCodec;

const Tavik::ManagedMethod& Print() {
    Tavik::TypeRegistry::Instance().Load();
    return *Desk::gDeskPrinterMethodObjects[0];
}

const Tavik::ManagedMethod& Echo() {
    Tavik::TypeRegistry::Instance().Load();
    return *Desk::gDeskPrinterMethodObjects[2];
}

Pellum::Ref<Desk::Sheet> MakeSheet() {
    auto sheet = Pellum::MakeRef<Desk::Sheet>();
    sheet->SetTitle("a");
    sheet->SetPassword(std::string("open sesame"));
    return sheet;
}

std::string EncodePrint(const Tavik::Arguments& arguments) {
    const auto target = Pellum::MakeRef<Tavik::MoRef>(&Desk::gDeskPrinterTypeInfo, "1 \"and\" 2");
    const auto context = Speaking("desk.version.version2")->WithSessionKey("the key")->WithLocale("en_US");
    std::string text;
    kCodec.EncodeRequest(
        {{*target, Print(), arguments, context.Get()}, "5f-1", std::chrono::milliseconds(1500)}, text);
    return text;
}

TEST(MessageTest, WritesForTheWireAndForTheLog) {
    const std::string request = EncodePrint(
        {MakeSheet(), nullptr, Pellum::Ref<Tavik::Any>(new Tavik::Primitive<std::string>("4711"))});
    EXPECT_EQ(
        request,
        R"({"method": "DeskPrint", "of": "DeskPrinter", "on": {"mo": "DeskPrinter", "id": "1 \"and\" 2"}, )"
        R"("version": "desk.version.version2", "session": "the key", "locale": "en_US", )"
        R"("correlation": "5f-1", "timeoutMs": 1500, )"
        R"("arguments": {"sheet": {"title": "a", "password": "open sesame"}, "pin": "4711"}})");
    EXPECT_EQ(
        kCodec.PrintRequest(request),
        R"({"method": "DeskPrint", "of": "DeskPrinter", "on": {"mo": "DeskPrinter", "id": "1 \"and\" 2"}, )"
        R"("version": "desk.version.version2", "session": "***", "locale": "en_US", )"
        R"("correlation": "5f-1", "timeoutMs": 1500, )"
        R"("arguments": {"sheet": {"title": "a", "password": "***"}, "pin": "***"}})");

    std::string response;
    kCodec.EncodeResult({Echo(), nullptr, "5f-1"}, MakeSheet().Get(), response);
    EXPECT_EQ(response, R"({"correlation": "5f-1", "result": {"title": "a", "password": "open sesame"}})");
    EXPECT_EQ(
        kCodec.PrintResponse(response, Echo()),
        R"({"correlation": "5f-1", "result": {"title": "a", "password": "***"}})");
}

TEST(MessageTest, ShowsNothingInTheLogOfWhatItCanNotRead) {
    const std::string request = EncodePrint({MakeSheet(), nullptr, nullptr});
    for (std::size_t length = 0; length < request.size(); ++length) {
        const std::string text = kCodec.PrintRequest(request.substr(0, length));
        EXPECT_THAT(text, HasSubstr("bytes that can not be read: "));
        EXPECT_THAT(text, Not(HasSubstr("sesame")));
        EXPECT_THAT(text, Not(HasSubstr("the key")));
    }
    EXPECT_THAT(kCodec.PrintResponse(R"({"result": "open sesame"})", Echo()), Not(HasSubstr("sesame")));
}

TEST(MessageTest, RefusesArgumentsWithoutAForm) {
    const auto notText = Pellum::Ref<Tavik::Any>(new Tavik::Primitive<std::string>("\xFF"));
    const auto sheet = MakeSheet();
    sheet->SetTitle("\xFF");
    const std::vector<std::pair<Tavik::Arguments, std::string>> table{
        {{nullptr, nullptr, notText}, "arguments.pin: is not UTF-8 text"},
        {{sheet, nullptr, nullptr}, "arguments.sheet.title: is not UTF-8 text"},
        {{nullptr}, "arguments: print takes 3 arguments, not 1"},
    };
    for (const auto& [arguments, reason] : table) {
        try {
            EncodePrint(arguments);
            ADD_FAILURE() << reason;
        } catch (const Tavik::MessageException& error) {
            EXPECT_EQ(std::string(error.what()), reason);
        }
    }
}

TEST(MessageTest, RefusesResponsesThatAreWrong) {
    const Tavik::ResponseForm form{Print(), nullptr, "c"};
    const std::vector<std::pair<std::string, std::string>> table{
        {"{}", "lacks the result of print"},
        {R"({"result": null})", "lacks the result"},
        {R"({"result": "x"})", "result: expected an int"},
        {R"({"result": 1, "result": 2})", "second member"},
        {R"({"result": 1, "fault": {"$type": "DeskJam", "tray": 1, "why": ""}})", "both"},
        {R"({"fault": {"$type": "DeskSheet", "title": ""}})", "expected an object of type"},
        {R"({"fault": 5})", "fault: expected an object"},
        {R"({"correlation": "d", "result": 1})", "another call"},
        {R"({"Result": 1})", R"(did you mean "result"?)"},
    };
    for (const auto& [text, reason] : table) {
        try {
            kCodec.DecodeResponse(text, form);
            ADD_FAILURE() << text;
        } catch (const Tavik::MessageException& error) {
            EXPECT_THAT(error.what(), HasSubstr(reason)) << text;
        }
    }
    EXPECT_NE(kCodec.DecodeResponse(R"({"result": 1, "correlation": "c"})", form).result.Get(), nullptr);
    EXPECT_EQ(kCodec.DecodeResponse("{}", {Echo(), nullptr, "c"}).result.Get(), nullptr);
}

} // namespace
