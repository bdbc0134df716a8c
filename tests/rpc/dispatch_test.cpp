#include "tavik/codec/json/message_codec.h"
#include "tavik/fault/runtime_faults.h"
#include "tests/rpc/desk.h"
#include "tests/rpc/fire.h"
#include "tests/rpc/jam.h"
#include "tests/rpc/photo_jam.h"
#include "tests/rpc/torn_sheet.h"
#include "tests/support/regex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kVersion1 = R"("version": "desk.version.version1", )";

/// A request for a method of the test's printer.
std::string Ask(
    const std::string& method, const std::string& arguments, const std::string& more = {},
    const std::string& of = "DeskPrinter") {
    return R"({"method": ")" + method + R"(", "of": ")" + of
         + R"(", "on": {"mo": "DeskPhotoPrinter", "id": "1"}, "correlation": "c", )" + more
         + R"("arguments": {)" + arguments + "}}";
}

std::string Serve(Desktop& desk, const std::string& request) {
    return desk.server->Serve(Tavik::Json::MessageCodec(), request, {});
}

/// What a request is answered by.
struct Exchange {
    std::string request;
    std::string answer; ///< a part of it
};

void ExpectAnswers(Desktop& desk, const std::vector<Exchange>& table) {
    for (const Exchange& row : table) {
        EXPECT_THAT(Serve(desk, row.request), HasSubstr(row.answer)) << row.request;
    }
}

TEST(DispatchTest, AnswersInTheFormThatPeopleRead) {
    Desktop desk;
    EXPECT_EQ(
        Serve(desk, Ask("DeskPrint", R"("sheet": {"title": "a"}, "copies": 2, "pin": "1")")),
        R"({"correlation": "c", "result": 2})");
    EXPECT_EQ(Serve(desk, Ask("DeskReset", "")), R"({"correlation": "c"})");
    // A call that comes without an identifier gets one.
    EXPECT_THAT(
        Serve(desk, R"({"on": {"id": "1", "mo": "DeskPrinter"}, "of": "DeskPrinter", "property": "queue"})"),
        TestSupport::MatchesRegex(
            R"(\{"correlation": "[0-9a-f]+-[0-9a-f]+", "result": \[\{"title": "a"\}\]\})"));
    EXPECT_EQ(
        Serve(desk, Ask("DeskAlign", R"("by": 3)", {}, "DeskPhotoPrinter")),
        R"({"correlation": "c", "result": 3000000000})");
}

TEST(DispatchTest, ChecksBeforeTheMethodRuns) {
    Desktop desk;
    ExpectAnswers(
        desk,
        {{R"({"method": "DeskReset", "of": "DeskPrinter", "on": {"mo": "DeskPrinter", "id": "2"}})",
          R"({"$type": "ManagedObjectNotFound", "obj": {"mo": "DeskPrinter", "id": "2"}})"},
         {R"({"method": "DeskReset", "of": "DeskPrinter", "on": {"mo": "Nothing", "id": "1"}})",
          "ManagedObjectNotFound"},
         {Ask("DeskNone", ""), R"(method \"DeskNone\" of \"DeskPrinter\" is not one of a DeskPhotoPrinter)"},
         {Ask("DeskReset", "", {}, "DeskPhotoPrinter"), "InvalidRequest"},
         {Ask("DeskReset", "", {}, "DeskSheet"), "InvalidRequest"},
         {Ask("DeskScan", "", kVersion1), "is not part of version desk.version.version1"},
         {Ask("DeskScan", ""), R"("result": "grey")"},
         {Ask("DeskReset", "", R"("version": "desk.version.none", )"), "there is no version"},
         {R"({"method": "DeskReset", "of": "DeskPrinter", "correlation": ")" + std::string(129, 'c')
              + R"(", "on": {"mo": "DeskPrinter", "id": "1"}})",
          "the correlation identifier is longer than 128 bytes"},
         {Ask("DeskPrint", R"("pin": "1")"),
          R"("InvalidArgument", "invalidProperty": "sheet", "reason": "the argument is required")"},
         {Ask("DeskPrint", R"("sheet": null, "pin": "1")"), R"("invalidProperty": "sheet")"}});
    EXPECT_EQ(desk.printer->runs, 0);
    EXPECT_THAT(desk.GetLog(), IsEmpty());
}

TEST(DispatchTest, RefusesMessagesThatAreWrong) {
    Desktop desk;
    const std::string deep(70, '[');
    std::vector<Exchange> table{
        {"", "the text is empty"},
        {"[]", "expected an object, found an array"},
        {"5", "expected an object"},
        {"{}", R"(lacks \"method\" or \"property\")"},
        {R"({"method": 5})", "method: expected a string, found a number"},
        {R"({"method": {"a": 1}})", "method: expected a string, found an object"},
        {R"({"method": "a", "property": "b"})", R"(there is a second member \"property\")"},
        {R"({"method": "a", "method": "b"})", "second member"},
        {R"({"methd": "a"})", R"(has no member \"methd\"; did you mean \"method\"?)"},
        {R"({"on": "DeskPrinter"})", "on: expected an object, found a string"},
        {R"({"on": {"mo": "DeskPrinter", "key": "1"}})", R"(\"mo\" and \"id\" only)"},
        {R"({"on": {"mo": "a", "mo": "b"}})", "second member"},
        {R"({"session": ["open sesame"]})", "session: expected a string, found an array"},
        {R"({"arguments": {}, "method": "DeskReset"})", "the request lacks"},
        {Ask("DeskReset", "") + "x", "expected nothing more"},
        {R"({"method": "DeskReset", "of": "DeskPrinter", "on": {"mo": "DeskPrinter", "id": "1"}, )"
         R"("arguments": {}, "locale": "en"})",
         "nothing comes after the arguments"},
        {Ask("DeskReset", "", R"("timeoutMs": -1, )"), "timeoutMs: expected a whole number"},
        {Ask("DeskReset", "", R"("timeoutMs": "5", )"), "timeoutMs: expected a whole number"},
        {Ask("DeskReset", R"("mode": 5)"), R"(reset has no parameter \"mode\")"},
        {Ask("DeskPrint", R"("sheets": {})"), R"(did you mean \"sheet\"?)"},
        {Ask("DeskPrint", R"("sheet": {"title": "a"}, "sheet": {})"), "second member"},
        {Ask("DeskPrint", R"("sheet": {"title": "a", "pages": "open sesame"})"),
         R"("invalidProperty": "sheet.pages", "reason": "expected an int, found)"},
        {Ask("DeskPrint", R"("sheet": {"title": "a", "clipped": [{"title": 5}]})"),
         R"("invalidProperty": "sheet.clipped[0].title")"},
        {Ask("DeskPrint", R"("sheet": {})"), "lacks the required"},
        {Ask("DeskPrint", R"("sheet": {"$type": "DeskJam"})"), "expected an object of type DeskSheet"},
        {Ask("DeskPrint", R"("sheet": {"title": "a", "colour": "b"})", kVersion1),
         "is not part of version desk.version.version1"},
        {Ask("DeskPrint", R"("copies": 5000000000)"), R"("invalidProperty": "copies")"},
        {Ask("DeskPrint", R"("copies": [1])"), R"("invalidProperty": "copies")"},
        {Ask("DeskPrint", R"("pin": 4711)"), R"("invalidProperty": "pin")"},
        {Ask("DeskEcho", R"("sheet": {"title": "a", "clipped": )" + deep), "InvalidArgument"},
    };
    const std::string whole = Ask("DeskPrint", R"("sheet": {"title": "a"}, "copies": 2, "pin": "1")");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        table.push_back({whole.substr(0, length), "\"reason\": \""});
    }
    ExpectAnswers(desk, table);
    for (const Exchange& row : table) {
        EXPECT_THAT(Serve(desk, row.request), Not(HasSubstr("sesame")));
    }
    EXPECT_EQ(desk.printer->runs, 0);
    EXPECT_THAT(desk.GetLog(), IsEmpty());
}

/// Lets in who has a key, and answers the others by a fault or by something else.
class Doorkeeper final : public Tavik::AccessPolicy {
public:
    void Check(const Tavik::ServerCall& call) override {
        const Tavik::MethodDescriptor* const method = call.GetMethod().GetMethodDescriptor();
        asked.emplace_back(method == nullptr || method->privilege == nullptr ? "none" : method->privilege);
        EXPECT_EQ(Tavik::ServerCall::Current(), &call);
        if (call.GetContext().GetSessionKey().empty()) {
            throw Desk::Fire::Exception("the gate");
        }
        if (call.GetContext().GetSessionKey() == "bad") {
            throw Pellum::Exception("no memory for keys");
        }
    }

    std::vector<std::string> asked;
};

TEST(DispatchTest, AsksThePolicyBeforeArgumentsAreRead) {
    const Pellum::Ref<Doorkeeper> keeper(new Doorkeeper);
    Desktop desk({}, keeper.Get());
    ExpectAnswers(
        desk,
        {{Ask("DeskPrint", R"("rubbish": 5)"), R"("fault": {"$type": "DeskFire", "where": "the gate"})"},
         {Ask("DeskPrint", R"("rubbish": 5)", R"("session": "good", )"), "InvalidArgument"},
         {Ask("DeskPrint", "", R"("session": "bad", )"), "SystemError"},
         {Ask("DeskScan", "", R"("session": "good", )"), R"("result": "grey")"},
         {Ask("DeskReset", ""), R"({"correlation": "c"})"},
         {R"({"property": "name", "of": "DeskPrinter", "on": {"mo": "DeskPrinter", "id": "1"}})",
          "DeskFire"}});
    EXPECT_THAT(keeper->asked, ElementsAre("Desk.Print", "Desk.Print", "Desk.Print", "none", "none"));
    EXPECT_THAT(
        desk.GetLog(), ElementsAre("call c of desk.Printer.print on DeskPhotoPrinter \"1\": "
                                   "Pellum::Exception: no memory for keys"));
}

TEST(DispatchTest, TellsTheClientWhatIsItsBusiness) {
    Desktop desk;
    const std::string hidden = R"({"correlation": "c", "fault": {"$type": "SystemError", )"
                               R"("reason": "the server failed to run the call", "correlationId": "c"}})";

    struct Row {
        std::function<void()> act;
        std::string answer;
        std::string logged; ///< a part of the line in the log; empty for none
        bool isOld = false; ///< the caller speaks the first version
    };

    const std::string jam = R"("tray": 2, "why": "paper"})";
    const std::vector<Row> table{
        {[] { throw Desk::Jam::Exception(2, "paper"); }, R"({"$type": "DeskJam", )" + jam, ""},
        {[] {
             Desk::PhotoJam::Exception exception;
             exception.GetFault()->SetTray(2);
             exception.GetFault()->SetWhy("paper");
             exception.Throw();
         },
         R"({"$type": "DeskPhotoJam", )" + jam, ""},
        {[] {
             const auto fault = Pellum::MakeRef<Desk::PhotoJam>();
             fault->SetWhy("x");
             fault->Throw();
         },
         hidden, "desk.PhotoJam", true},
        {[] {
             throw Orlin::Fault::InvalidArgument::Exception(
                 new Orlin::Fault::InvalidArgument("what", "dull"));
         },
         R"({"$type": "InvalidArgument", "invalidProperty": "what", "reason": "dull"})", ""},
        {[] { throw Desk::TornSheet::Exception(nullptr, nullptr); }, hidden,
         "fault.sheet: is required and not set"},
        {[] {
             throw Desk::TornSheet::Exception(
                 Pellum::MakeRef<Desk::Sheet>().Get(),
                 Pellum::MakeRef<Tavik::MoRef>(&Desk::gDeskPrinterTypeInfo, "1").Get());
         },
         hidden, "fault.printer: refers to a desk.Printer, expected a desk.PhotoPrinter"},
        {[] { throw Desk::Fire::Exception("cellar"); }, hidden,
         "Desk::Fire::Exception: desk.Fire (the method does not declare this fault)"},
        {[] { throw Tavik::RuntimeFault::Exception(); }, hidden, "orlin.RuntimeFault"},
        {[] { throw Tavik::MethodFault::Exception(nullptr); }, hidden, "MethodFault::Exception"},
        {[] { throw Tavik::CallTimedOutException("elsewhere"); }, hidden, "elsewhere"},
        {[] { throw Tavik::MessageException("arguments.a", "elsewhere"); }, hidden, "elsewhere"},
        {[] { throw std::runtime_error("password is sesame"); }, hidden, "password is sesame"},
        {[] { throw 5; }, hidden, "no exception"},
        {[] { throw std::bad_alloc(); }, hidden, "bad_alloc"},
    };
    for (const Row& row : table) {
        const std::size_t before = desk.GetLog().size();
        desk.printer->onAct = [&](const std::string&) {
            row.act();
            return Pellum::Optional<std::string>();
        };
        const std::string answer =
            Serve(desk, Ask("DeskAct", R"("what": "")", row.isOld ? kVersion1 : std::string()));
        EXPECT_THAT(answer, HasSubstr(row.answer));
        const std::vector<std::string> log = desk.GetLog();
        ASSERT_EQ(log.size(), before + (row.logged.empty() ? 0 : 1)) << answer;
        if (!row.logged.empty()) {
            EXPECT_THAT(log.back(), AllOf(HasSubstr("call c of desk.Printer.act"), HasSubstr(row.logged)));
        }
    }
    desk.printer->onAct = [](const std::string&) { return std::string("\xFF"); }; // has no form
    EXPECT_EQ(Serve(desk, Ask("DeskAct", R"("what": "")")), hidden);
}

/// A class of somebody else's.
class Speechless final : public std::exception {
public:
    const char* what() const noexcept override { return nullptr; }
};

TEST(DispatchTest, LogsOneLineWhateverIsSaid) {
    Desktop desk;
    desk.printer->onAct = [](const std::string& what) -> Pellum::Optional<std::string> {
        EXPECT_THAT(
            Tavik::ServerCall::Current()->GetContext().ToString(), HasSubstr(R"(correlation "a\ncall b")"));
        if (what.empty()) {
            throw Speechless();
        }
        throw std::runtime_error(what);
    };
    const auto context = Pellum::MakeRef<Tavik::RequestContext>()->WithCorrelationId("a\ncall b");
    for (const char* const what : {"", "c\x1b[2J"}) {
        EXPECT_THROW(desk.Connect(context.Get())->Act(what), Orlin::Fault::SystemError::Exception);
    }
    const std::string call = R"(call a\x0acall b of desk.Printer.act on DeskPhotoPrinter "1": )";
    EXPECT_THAT(
        desk.GetLog(), ElementsAre(
                           AllOf(HasSubstr(call), HasSubstr("Speechless: no text")),
                           call + R"(std::runtime_error: c\x1b[2J)"));
}

TEST(DispatchTest, HonoursTheVersionBothWays) {
    Desktop desk;
    const auto sheet = Pellum::MakeRef<Desk::Sheet>();
    sheet->SetTitle("a");
    sheet->SetColour(std::string("red"));
    const auto old = Speaking("desk.version.version1");
    Pellum::Ref<Desk::Sheet> back;
    desk.Connect()->Echo(sheet.Get(), back);
    EXPECT_EQ(back->ToString(), sheet->ToString());
    desk.Connect(old.Get())->Echo(sheet.Get(), back);
    EXPECT_EQ(back->ToString(), R"({"$type": "DeskSheet", "title": "a"})");
    EXPECT_THROW(desk.Connect(old.Get())->Scan({}), Orlin::Fault::InvalidRequest::Exception);
    EXPECT_EQ(desk.Connect(Speaking("desk.version.version2").Get())->Scan({}), "grey");
}

TEST(DispatchTest, TellsTheMethodWhoCalls) {
    Desktop desk;
    std::string seen;
    desk.printer->onAct = [&](const std::string&) {
        const Tavik::ServerCall& call = *Tavik::ServerCall::Current();
        const Tavik::RequestContext& context = call.GetContext();
        seen = context.GetSessionKey() + ' ' + context.GetLocale() + ' ' + context.GetCorrelationId() + ' '
             + context.GetVersion()->GetName() + ' ' + call.GetMethod().GetName();
        EXPECT_EQ(&call.GetTarget(), desk.printer.Get());
        EXPECT_FALSE(call.IsCancelled());
        EXPECT_LE(*context.GetDeadline(), Tavik::RequestContext::Clock::now() + std::chrono::minutes(1));
        return Pellum::Optional<std::string>();
    };
    const auto context = Speaking("desk.version.version2")
                             ->WithSessionKey("key")
                             ->WithLocale("de")
                             ->WithCorrelationId("mine")
                             ->WithTimeout(std::chrono::minutes(1));
    desk.Connect(context.Get())->Act("");
    EXPECT_EQ(seen, "key de mine desk.version.version2 act");
    EXPECT_EQ(Tavik::ServerCall::Current(), nullptr);
}

} // namespace
