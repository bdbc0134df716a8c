#include "pellum/error/exception.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/boxing.h"
#include "tests/managed/fixture.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/thing_broken.h"
#include "tests/sample/api/thing_stub.h"

#include <limits>

/// The dispatch function, with a stub as the object that it calls.
namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Tavik::Any;
using Tavik::Primitive;

class Dispatch : public CallerTest {
protected:
    static int IndexOf(std::string_view method) {
        for (const auto& object : Tavik::GetMoType<Sample::Caller>()->GetMethodObjects()) {
            if (object->GetName() == method) {
                return object->GetIndex();
            }
        }
        throw Pellum::Exception("no such method");
    }

    void Call(std::string_view method, Tavik::Arguments arguments = {}) {
        Call(stub.Get(), IndexOf(method), std::move(arguments));
    }

    void Call(Tavik::ManagedObject* target, int index, Tavik::Arguments arguments) {
        Tavik::GetMoType<Sample::Caller>()->GetManagedTypeInfo().dispatch(target, index, arguments, m_result);
    }

    Ref<Any> m_result;
};

Ref<Any> Text(const char* text) {
    return MakeRef<Primitive<std::string>>(text);
}

Ref<Any> Int(std::int32_t number) {
    return MakeRef<Primitive<std::int32_t>>(number);
}

TEST_F(Dispatch, LooksAtTheTargetFirst) {
    const auto thing = MakeStub<Sample::ThingStub>(Sample::gSampleThingTypeInfo);
    for (const int index : {0, -1, 1000}) {
        EXPECT_EQ(
            MismatchOf([&] { Call(thing.Get(), index, {}); }),
            (Mismatch<Sample::Caller, Sample::ThingStub>()));
    }
    EXPECT_EQ(MismatchOf([&] { Call(nullptr, 0, {}); }), (Mismatch<Sample::Caller, std::nullptr_t>()));
    EXPECT_EQ(MismatchOf([&] { Call(nullptr, -1, {}); }), "nothing");
}

TEST_F(Dispatch, IgnoresAnIndexThatIsNone) {
    m_result = Text("before");
    const int count = static_cast<int>(std::size(Sample::gSampleCallerMethodObjects));
    for (const int index : {-1, count, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        Call(stub.Get(), index, {Int(1)});
    }
    EXPECT_EQ(adapter->count, 0);
    EXPECT_EQ(Show(m_result), R"(string "before")");
    Call(stub.Get(), count - 1, {});
    EXPECT_STREQ(adapter->method->GetName(), "state");
}

TEST_F(Dispatch, RefusesArgumentsOfAnotherClass) {
    using String = Primitive<std::string>;
    using Number = Primitive<std::int32_t>;
    const Ref<Any> fault = MakeRef<Sample::ThingBroken>();
    const Ref<Any> strings = MakeRef<Tavik::Array<std::string>>();

    const struct {
        const char* method;
        Tavik::Arguments arguments;
        std::string mismatch;
    } rows[] = {
        {"texts", {Int(1), nullptr, Text(""), Text("")}, Mismatch<String, Number>()},
        {"texts", {Text(""), Int(1), Int(2), Text("")}, Mismatch<String, Number>()},
        {"texts", {Text(""), nullptr, fault, Int(1)}, Mismatch<String, Sample::ThingBroken>()},
        {"texts", {Text(""), nullptr, Text(""), nullptr}, Mismatch<String, std::nullptr_t>()},
        {"texts", {Text(""), nullptr, Text("")}, Mismatch<String, std::nullptr_t>()},
        {"flags", {Int(1), Text("")}, Mismatch<Primitive<bool>, Number>()},
        {"optionals", {Text("")}, Mismatch<Number, String>()},
        {"objects", {fault}, Mismatch<Sample::Point, Sample::ThingBroken>()},
        {"objects", {nullptr, nullptr, fault}, Mismatch<Tavik::MoRef, Sample::ThingBroken>()},
        {"arrays", {strings}, Mismatch<Tavik::DataArray<Sample::Point>, Tavik::Array<std::string>>()},
        {"arrays",
         {nullptr, strings, strings},
         Mismatch<Tavik::Array<Ref<Tavik::MoRef>>, Tavik::Array<std::string>>()},
    };

    for (const auto& row : rows) {
        EXPECT_EQ(MismatchOf([&] { Call(row.method, row.arguments); }), row.mismatch) << row.method;
    }
    EXPECT_EQ(adapter->count, 0);
    EXPECT_EQ(m_result, nullptr);
}

TEST_F(Dispatch, TakesWhatIsMissingForUnset) {
    Call("texts", {Text("a"), nullptr, Text("c"), Text("d")});
    EXPECT_EQ(Sent(), R"(string "a", null, string "c", string "d")");
    Call("optionals", {nullptr, nullptr, nullptr, nullptr, nullptr, Int(7), Text("one too many")});
    EXPECT_EQ(Sent(), "null, null, null, null, null, int 7");
    Call("objects");
    EXPECT_EQ(Sent(), "null, null, null, null, null");
}

TEST_F(Dispatch, BoxesResults) {
    adapter->answer = MakeRef<Primitive<bool>>(true);
    Call("giveBoolean");
    EXPECT_EQ(m_result, Primitive<bool>::Factory::sTrue);
    Call("giveOptionalBoolean");
    EXPECT_EQ(m_result, Primitive<bool>::Factory::sTrue);
    adapter->answer.Reset();
    for (const char* method :
         {"giveOptionalBoolean", "giveOptionalText", "giveOptionalLong", "count", "shade", "giveObject",
          "giveReference", "giveTexts", "giveAny"}) {
        m_result = Text("before");
        Call(method);
        EXPECT_EQ(m_result, nullptr) << method;
    }
    const auto point = MakeRef<Sample::Point>();
    adapter->answer = point;
    Call("giveObject");
    EXPECT_EQ(m_result, point.Get());
    Call("nothing");
    EXPECT_EQ(m_result, point.Get());
    adapter->answer = Text("text");
    Call("giveText");
    EXPECT_EQ(Show(m_result), R"(string "text")");
    EXPECT_NE(m_result, adapter->answer);
}

TEST_F(Dispatch, LetsExceptionsThroughAndKeepsCounts) {
    const auto point = MakeRef<Sample::Point>();
    m_result = Text("before");
    adapter->onCall = [](const auto&) { throw Pellum::Exception("failed"); };
    EXPECT_THROW(Call("objects", {point}), Pellum::Exception);
    EXPECT_THROW(Call("giveObject"), Pellum::Exception);
    EXPECT_EQ(Show(m_result), R"(string "before")");
    EXPECT_EQ(point->GetRefCount(), 1);
    adapter->onCall = nullptr;
    Call("objects", {point});
    adapter->arguments.clear();
    EXPECT_EQ(point->GetRefCount(), 1);
}

} // namespace
