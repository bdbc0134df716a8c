#include "tavik/fault/runtime_faults.h"
#include "tavik/value/open_writer.h"
#include "tests/sample/api/badly_failed.h"
#include "tests/sample/api/bag_lost.h"
#include "tests/sample/api/bag_torn.h"
#include "tests/sample/api/colour.h"
#include "tests/sample/api/many_kinds.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/throwable.h"
#include "tests/support/place.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <sstream>

/// Faults that are named in backtraces: outside of the unnamed namespace and exported.
namespace TavikFaultTest {

__attribute__((visibility("default"), noinline)) void ByFault() {
    Pellum::MakeRef<Sample::Failed>()->Throw();
}

__attribute__((visibility("default"), noinline)) void ByException() {
    throw Sample::BadlyFailed::Exception("why", 3, nullptr);
}

__attribute__((visibility("default"), noinline)) void ByWrapping() {
    throw Tavik::RuntimeFault::Exception(Pellum::MakeRef<Sample::Failed>().Get());
}

__attribute__((visibility("default"), noinline)) void ByCreating() {
    const auto fault = Pellum::MakeRef<Sample::Failed>();
    std::unique_ptr<Pellum::Exception>(fault->CreateException())->Throw();
}

} // namespace TavikFaultTest

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using TestSupport::IsIn;

/// What `raise` throws, as a copy.
std::unique_ptr<Pellum::Exception> Caught(const std::function<void()>& raise) {
    try {
        raise();
    } catch (const Pellum::Exception& exception) {
        return std::unique_ptr<Pellum::Exception>(exception.Clone());
    }
    return nullptr;
}

TEST(Fault, IsSharedByAllCopiesOfItsException) {
    const auto fault = MakeRef<Sample::BadlyFailed>();
    {
        Sample::BadlyFailed::Exception exception(fault.Get());
        const Sample::BadlyFailed::Exception copy(
            exception); // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(copy.GetFault(), fault.Get());
        const std::unique_ptr<Pellum::Exception> clone(exception.Clone());
        const std::unique_ptr<Sample::BadlyFailed::Exception> created(fault->CreateException());
        EXPECT_EQ(fault->GetRefCount(), 5);
        EXPECT_EQ(dynamic_cast<Sample::BadlyFailed::Exception&>(*clone).GetFault(), fault.Get());
        EXPECT_THROW(clone->Throw(), Sample::BadlyFailed::Exception);
        exception = Sample::BadlyFailed::Exception("another", {}, nullptr);
        EXPECT_EQ(exception.GetFault()->GetWhy(), "another");
        EXPECT_EQ(fault->GetRefCount(), 4);
    }
    EXPECT_EQ(fault->GetRefCount(), 1);
    EXPECT_EQ(Sample::Failed::Exception(nullptr).GetFault(), nullptr);
}

TEST(Fault, IsMadeFromItsOwnProperties) {
    const auto point = MakeRef<Sample::Point>();
    const auto points = MakeRef<Tavik::DataArray<Sample::Point>>();
    const auto colours = MakeRef<Tavik::Array<Sample::Colour>>();
    const auto when = Pellum::System::DateTime::Now();
    {
        const Sample::ManyKinds::Exception exception(
            7, true, Sample::Colour::blue, when, {1, 2}, "maybe", std::int64_t{8}, false, point.Get(),
            point.Get(), nullptr, points.Get(), colours.Get(), "message", "hidden", {}, nullptr);
        const Sample::ManyKinds& fault = *exception.GetFault();
        EXPECT_EQ(fault.GetPart(), "") << "inherited";
        EXPECT_EQ(fault.GetCount(), 7);
        EXPECT_TRUE(fault.IsIsOn());
        EXPECT_EQ(fault.GetColour(), Sample::Colour::blue);
        EXPECT_EQ(fault.GetWhen(), when);
        EXPECT_EQ(fault.GetBytes().size(), 2U);
        EXPECT_EQ(*fault.PeekMaybeText(), "maybe");
        EXPECT_EQ(*fault.PeekMaybeLong(), 8);
        EXPECT_FALSE(*fault.PeekMaybeOn());
        EXPECT_EQ(fault.GetPoint(), point.Get());
        EXPECT_EQ(fault.GetAny(), point.Get());
        EXPECT_EQ(point->GetRefCount(), 3);
        EXPECT_EQ(fault.GetThing(), nullptr);
        EXPECT_EQ(fault.GetPtrPoints(), points.Get());
        EXPECT_EQ(fault.GetPtrColours(), colours.Get());
        EXPECT_EQ(fault.PeekReason(), nullptr);
        EXPECT_EQ(fault.GetRefCount(), 1);
    }
    EXPECT_EQ(point->GetRefCount(), 1);
    EXPECT_NE(Sample::BagTorn::Exception().GetFault(), nullptr);

    using Sample::Namespace::Class::Throwable;
    const auto inner = MakeRef<Throwable>();
    EXPECT_EQ(Throwable::Exception(inner.Get()).GetFault(), inner.Get());
    const Throwable::Exception outer(Morvane::Support::kFromProperties, inner.Get());
    EXPECT_EQ(outer.GetFault()->GetFault(), inner.Get());
}

/// A user's own, without a class to throw.
class OwnFault : public Sample::BadlyFailed {};

TEST(Fault, OfAUsersClassIsThrownAsItsBase) {
    const auto fault = MakeRef<OwnFault>();
    fault->SetWhy("because");
    EXPECT_THROW(fault->Throw(), Sample::BadlyFailed::Exception);
    EXPECT_STREQ(Sample::BadlyFailed::Exception(fault.Get()).what(), "sample.BadlyFailed: why = \"because\"");
}

std::string What(Tavik::MethodFault& fault) {
    return Tavik::MethodFault::Exception(&fault).what();
}

TEST(FaultMessage, HasTheTextsThatAreMessagesAndNoSecret) {
    const auto many = MakeRef<Sample::ManyKinds>();
    EXPECT_EQ(What(*many), "sample.ManyKinds");
    many->SetPart("no message");
    many->SetErrMessage("a \"quoted\" \x1B[31m\xE2\x80\xAE text\n");
    many->SetSecretWhy("open sesame");
    many->SetReason("open sesame");
    many->SetMaybeText("no message");
    EXPECT_EQ(What(*many), R"(sample.ManyKinds: errMessage = "a \"quoted\" \u001b[31m\u202e text\n")");

    // Open content: texts at the top, by their names; what is described comes first.
    const auto bag = MakeRef<Sample::BagLost>();
    bag->SetWhere("there");
    Tavik::OpenContent& content = bag->_GetContent();
    for (const char* name :
         {"msg", "faultReason", "two words why", "passwordMessage", "tokenError", "name", "where"}) {
        content.SetText(name, "open sesame");
    }
    content.SetNumber("error", 5);
    EXPECT_EQ(
        What(*bag), R"(sample.BagLost: msg = "open sesame", faultReason = "open sesame", )"
                    R"("two words why" = "open sesame")");
}

TEST(FaultMessage, IsCutBetweenCharacters) {
    const auto fault = MakeRef<Sample::BadlyFailed>();
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "\xE2\x82\xAC"; // three bytes
    }
    fault->SetWhy(text);
    const std::string what = What(*fault);
    EXPECT_LT(what.size(), 500U);
    EXPECT_THAT(what, testing::EndsWith("\xE2\x82\xAC...\""));
    EXPECT_THAT(what, Not(HasSubstr("\xEF\xBF\xBD")));
    fault->SetWhy("\xFF\xFE not UTF-8");
    EXPECT_THAT(What(*fault), HasSubstr("\xEF\xBF\xBD"));

    const auto bag = MakeRef<Sample::BagTorn>();
    for (int i = 0; i < 50; ++i) {
        bag->_GetContent().SetText(std::to_string(i) + std::string(1000, 'x') + "msg", text);
    }
    EXPECT_LT(What(*bag).size(), 5000U);
}

TEST(FaultPlace, IsTheCallThatRaised) {
    const struct {
        void (*raise)();
        const char* name;
    } rows[] = {
        {&TavikFaultTest::ByFault, "TavikFaultTest::ByFault"},
        {&TavikFaultTest::ByException, "TavikFaultTest::ByException"},
        {&TavikFaultTest::ByWrapping, "TavikFaultTest::ByWrapping"},
        {&TavikFaultTest::ByCreating, "TavikFaultTest::ByCreating"},
    };

    for (const auto& row : rows) {
        const auto caught = Caught(row.raise);
        ASSERT_NE(caught, nullptr);
        EXPECT_THAT(caught->Where(), IsIn(row.raise, row.name));
        std::ostringstream out;
        caught->Dump(out);
        EXPECT_THAT(out.str(), HasSubstr(std::string(": ") + caught->what() + "\n  at " + caught->Where()))
            << "class, message, place";
        EXPECT_TRUE(caught->GetBacktrace()->BeginsAtPlace());
    }
}

TEST(FaultPlace, NeedsNoNames) {
    // The functions in here are not exported.
    const auto byFault = Caught([] { MakeRef<Sample::Failed>()->Throw(); });
    const auto byException = Caught([] { throw Sample::Failed::Exception(); });
    for (const auto* caught : {byFault.get(), byException.get()}) {
        EXPECT_THAT(caught->Where(), StartsWith(TestSupport::ModuleOfProgram("tavik_tests") + "+0x"));
        const std::unique_ptr<Pellum::Exception> clone(caught->Clone());
        EXPECT_EQ(Caught([&] { clone->Throw(); })->Where(), caught->Where()) << "the first time";
    }
}

/// Raises another fault while it is being raised.
class NestingFault : public Sample::Failed {
protected:
    [[noreturn]] void ThrowInternal() override {
        EXPECT_THAT(
            Caught(&TavikFaultTest::ByFault)->Where(),
            IsIn(&TavikFaultTest::ByFault, "TavikFaultTest::ByFault"));
        throw Exception(this);
    }
};

TEST(FaultPlace, IsTheOneOfEachFault) {
    const auto caught = Caught([] { MakeRef<NestingFault>()->Throw(); });
    EXPECT_EQ(dynamic_cast<const Sample::Failed::Exception&>(*caught).GetFault()->GetRefCount(), 1);
}

TEST(RuntimeFaults, SayWhatIsWrongAsContent) {
    using namespace Orlin::Fault;
    const auto argument = MakeRef<InvalidArgument>("spec.location", "is empty");
    EXPECT_EQ(argument->GetInvalidProperty(), "spec.location");
    EXPECT_EQ(
        argument->ToString(),
        R"({"$type": "InvalidArgument", "invalidProperty": "spec.location", "reason": "is empty"})");
    EXPECT_EQ(
        What(*argument),
        R"(orlin.fault.InvalidArgument: invalidProperty = "spec.location", reason = "is empty")");
    const auto error = MakeRef<SystemError>("the call failed", "4711");
    EXPECT_EQ(error->GetReason(), "the call failed");
    EXPECT_EQ(error->GetCorrelationId(), "4711");
    EXPECT_EQ(MakeRef<InvalidRequest>("no such method")->GetReason(), "no such method");
    const auto missing = MakeRef<ManagedObjectNotFound>("MorvaneTask", "task-7");
    EXPECT_EQ(
        missing->ToString(),
        R"({"$type": "ManagedObjectNotFound", "obj": {"mo": "MorvaneTask", "id": "task-7"}})");
    EXPECT_EQ(What(*missing), R"(orlin.fault.ManagedObjectNotFound: obj = MorvaneTask "task-7")");
    const Ref<ManagedObjectNotFound> clone(missing->_Clone());
    EXPECT_EQ(clone->GetObjectTypeName(), "MorvaneTask");
    EXPECT_EQ(clone->GetObjectId(), "task-7");

    // Peers may put in anything, or nothing.
    clone->_GetContent().SetNumber("obj", 3);
    EXPECT_EQ(clone->GetObjectId(), "");
    error->_GetContent().SetNull("reason");
    error->_GetContent().Remove("correlationId");
    EXPECT_EQ(error->GetReason() + error->GetCorrelationId(), "");
    EXPECT_TRUE(MakeRef<InvalidArgument>("", "")->_GetContent().IsEmpty());
}

} // namespace
