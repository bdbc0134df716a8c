#include "pellum/error/exception.h"

#include "pellum/error/type_mismatch.h"
#include "tests/support/place.h"
#include "tests/support/regex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

// Outside of the unnamed namespace and exported, so that a backtrace can name it.
namespace PellumExceptionTest {

__attribute__((visibility("default"), noinline)) void Fail(const std::string& message) {
    throw Pellum::Exception(message);
}

__attribute__((visibility("default"), noinline)) void Mismatch() {
    Pellum::ThrowTypeMismatchException(typeid(std::ostream), typeid(int));
}

} // namespace PellumExceptionTest

namespace {

using Pellum::Exception;
using Pellum::ExceptionImpl;
using Pellum::Throwable;
using Pellum::TypeMismatchException;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using TestSupport::IsIn;
using TestSupport::ModuleOfProgram;

class DiskException : public ExceptionImpl<DiskException> {
public:
    explicit DiskException(int disk) : ExceptionImpl("disk " + std::to_string(disk)), m_disk(disk) {}

    [[nodiscard]] int GetDisk() const { return m_disk; }

private:
    int m_disk;
};

class DiskFullException : public ExceptionImpl<DiskFullException, DiskException> {
public:
    using ExceptionImpl::ExceptionImpl;
};

template <typename Caught>
bool IsCaughtAs(Exception& exception) {
    try {
        exception.Throw();
    } catch (const Caught& caught) {
        const auto* const full = dynamic_cast<const DiskFullException*>(&caught);
        return full != nullptr && full != &exception && full->GetDisk() == 3;
    } catch (...) { // NOLINT(bugprone-empty-catch): any other class is the answer "no"
    }
    return false;
}

TEST(ExceptionTest, ThrowKeepsTheMostDerivedClassForEveryHandler) {
    DiskFullException exception(3);
    EXPECT_TRUE(IsCaughtAs<DiskFullException>(exception));
    EXPECT_TRUE(IsCaughtAs<DiskException>(exception));
    EXPECT_TRUE(IsCaughtAs<Exception>(exception));
    EXPECT_TRUE(IsCaughtAs<Throwable>(exception));
    EXPECT_TRUE(IsCaughtAs<std::exception>(exception));
    EXPECT_FALSE(IsCaughtAs<TypeMismatchException>(exception));
}

TEST(ExceptionTest, CloneOutlivesItsSourceAndSharesTheBacktrace) {
    std::unique_ptr<Exception> clone;
    const Pellum::System::Backtrace* backtrace = nullptr;
    std::string where;
    try {
        throw DiskFullException(3);
    } catch (const Exception& exception) {
        backtrace = exception.GetBacktrace();
        where = exception.Where();
        clone.reset(exception.Clone());
    }
    ASSERT_NE(dynamic_cast<const DiskFullException*>(clone.get()), nullptr);
    EXPECT_STREQ(clone->what(), "disk 3");
    EXPECT_EQ(clone->GetBacktrace(), backtrace);
    EXPECT_EQ(clone->GetBacktrace()->GetRefCount(), 1);
    EXPECT_EQ(clone->Where(), where);
}

TEST(ExceptionTest, ThrowingAgainKeepsTheFirstPlace) {
    const Exception original("first");
    try {
        std::unique_ptr<Exception>(original.Clone())->Throw();
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.GetBacktrace(), original.GetBacktrace());
    }
}

TEST(ExceptionTest, PlainExceptionsCloneAndThrowThemselves) {
    Exception exception("plain");
    const std::unique_ptr<Exception> clone(exception.Clone());
    EXPECT_THROW(clone->Throw(), Exception);
    EXPECT_STREQ(clone->what(), "plain");
}

/// Runs `raise` and returns what it threw.
template <typename Raise>
std::unique_ptr<Exception> Caught(Raise raise) {
    try {
        raise();
    } catch (const Exception& exception) {
        return std::unique_ptr<Exception>(exception.Clone());
    }
    return nullptr;
}

TEST(ExceptionTest, WhereIsTheFunctionThatFailedNotTheOneThatRaises) {
    const auto failed = Caught([] { PellumExceptionTest::Fail("message"); });
    ASSERT_NE(failed, nullptr);
    EXPECT_THAT(failed->Where(), IsIn(&PellumExceptionTest::Fail, "PellumExceptionTest::Fail"));
    EXPECT_THAT(
        failed->Where(), TestSupport::ContainsRegex(ModuleOfProgram("pellum_tests") + "\\+0x[0-9a-f]+\\)?$"));

    const auto mismatch = Caught([] { PellumExceptionTest::Mismatch(); });
    ASSERT_NE(mismatch, nullptr);
    EXPECT_THAT(mismatch->Where(), IsIn(&PellumExceptionTest::Mismatch, "PellumExceptionTest::Mismatch"));
}

TEST(ExceptionTest, DumpTellsClassMessagePlaceAndCalls) {
    const auto failed = Caught([] { PellumExceptionTest::Fail("disk is on fire"); });
    ASSERT_NE(failed, nullptr);
    std::ostringstream out;
    failed->Dump(out);
    EXPECT_THAT(
        out.str(), StartsWith("Pellum::Exception: disk is on fire\n  at " + failed->Where() + "\n  #0 "));
    EXPECT_THAT(out.str(), HasSubstr(" " + failed->Where() + "\n  #")) << "among the calls";
    EXPECT_THAT(out.str(), EndsWith("\n"));
}

TEST(TypeMismatchTest, NamesTheExpectedTypeFirst) {
    const auto caught = Caught([] { Pellum::ThrowTypeMismatchException(typeid(Exception), typeid(int)); });
    const auto* const mismatch = dynamic_cast<const TypeMismatchException*>(caught.get());
    ASSERT_NE(mismatch, nullptr);
    EXPECT_EQ(mismatch->GetExpected(), "Pellum::Exception");
    EXPECT_EQ(mismatch->GetReceived(), "int");
    EXPECT_STREQ(mismatch->what(), "type mismatch: expected Pellum::Exception, received int");
}

TEST(TypeMismatchTest, TakesNamesToo) {
    const auto caught = Caught([] { Pellum::ThrowTypeMismatchException("morvane.A", "morvane.B"); });
    ASSERT_NE(caught, nullptr);
    EXPECT_STREQ(caught->what(), "type mismatch: expected morvane.A, received morvane.B");
}

} // namespace
