#include "pellum/error/exception.h"
#include "tavik/managed/managed_method.h"
#include "tavik/managed/server_object.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/boxing.h"
#include "tests/managed/fixture.h"
#include "tests/sample/api/box_holder_stub.h"
#include "tests/sample/api/boxed_point.h"
#include "tests/sample/api/class.h"
#include "tests/sample/api/narrow_stub.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/special_thing_stub.h"
#include "tests/sample/api/thing_broken.h"

#include <functional>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Sample::Colour;
using Tavik::Any;
using Tavik::MoRef;
using Tavik::Primitive;
using Caller = Sample::CallerStub;

class Stubs : public CallerTest {};

const Pellum::System::DateTime kTime = Pellum::System::DateTime::FromUtcTime(1'600'000'000'000'000);

TEST_F(Stubs, ShareTheTwoBooleans) {
    stub->Flags(true, false);
    EXPECT_EQ(adapter->arguments[0], Primitive<bool>::Factory::sTrue);
    EXPECT_EQ(adapter->arguments[1], Primitive<bool>::Factory::sFalse);
}

TEST_F(Stubs, SendObjectsThemselves) {
    const auto point = MakeRef<Sample::OpenPoint>();
    const auto broken = MakeRef<Sample::ThingBroken>();
    const auto thing = MakeRef<MoRef>(&Sample::gSampleThingTypeInfo, "t");
    stub->Objects(point.Get(), nullptr, thing.Get(), broken.Get(), broken.Get());
    EXPECT_EQ(adapter->arguments, (Tavik::Arguments{point, nullptr, thing, broken, broken}));
    const auto points = MakeRef<Tavik::DataArray<Sample::Point>>();
    const auto colours = MakeRef<Tavik::Array<Colour>>();
    stub->Arrays(points.Get(), nullptr, nullptr, nullptr, colours.Get());
    EXPECT_EQ(adapter->arguments, (Tavik::Arguments{points, nullptr, nullptr, nullptr, colours}));
    EXPECT_EQ(broken->GetRefCount(), 1);
}

/// Answers a call in every way: as it should be, with nothing, and with something else.
template <class T>
void ExpectResult(TestSupport::RecordingAdapter& adapter, Caller& stub, T (Caller::*call)(), const T& value) {
    SCOPED_TRACE(Pellum::Demangle(typeid(T)));
    adapter.answer = Tavik::Boxing<T>::Box(value);
    EXPECT_EQ((stub.*call)(), value);
    adapter.answer.Reset(new Sample::Point);
    const std::string wrong = MismatchOf([&] { (stub.*call)(); });
    adapter.answer.Reset();
    if constexpr (requires { value.IsSet(); }) {
        EXPECT_EQ(wrong, (Mismatch<Primitive<typename T::ValueType>, Sample::Point>()));
        EXPECT_FALSE((stub.*call)().IsSet());
    } else {
        EXPECT_EQ(wrong, (Mismatch<Primitive<T>, Sample::Point>()));
        EXPECT_EQ(MismatchOf([&] { (stub.*call)(); }), (Mismatch<Primitive<T>, std::nullptr_t>()));
    }
}

template <class T>
void ExpectResult(TestSupport::RecordingAdapter& adapter, Caller& stub, void (Caller::*call)(Ref<T>&)) {
    SCOPED_TRACE(Pellum::Demangle(typeid(T)));
    Ref<T> out;
    Ref<Any> value;
    if constexpr (std::is_same_v<T, MoRef>) {
        value = MakeRef<MoRef>(&Sample::gSampleThingTypeInfo, "t");
    } else if constexpr (std::is_same_v<T, Any>) {
        value = MakeRef<Primitive<std::string>>("any");
    } else {
        value = MakeRef<T>();
    }
    adapter.answer = value;
    (stub.*call)(out);
    EXPECT_EQ(static_cast<Any*>(out.Get()), value.Get());
    if constexpr (!std::is_same_v<T, Any>) {
        adapter.answer = MakeRef<Primitive<float>>(1.0F);
        EXPECT_EQ(MismatchOf([&] { (stub.*call)(out); }), (Mismatch<T, Primitive<float>>()));
        EXPECT_EQ(static_cast<Any*>(out.Get()), value.Get());
        EXPECT_EQ(adapter.answer->GetRefCount(), 1);
    }
    adapter.answer.Reset();
    (stub.*call)(out);
    EXPECT_EQ(out.Get(), nullptr);
    EXPECT_EQ(value->GetRefCount(), 1);
}

TEST_F(Stubs, UnboxResultsByTheirDeclaredType) {
    using Text = std::string;
    ExpectResult<Text>(*adapter, *stub, &Caller::GiveText, "text");
    ExpectResult<Pellum::Optional<Text>>(*adapter, *stub, &Caller::GiveOptionalText, Text());
    ExpectResult<std::int32_t>(*adapter, *stub, &Caller::GiveInt, -7);
    ExpectResult<std::int64_t>(*adapter, *stub, &Caller::GiveLong, 1LL << 40);
    ExpectResult<Pellum::Optional<std::int64_t>>(*adapter, *stub, &Caller::GiveOptionalLong, 0LL);
    ExpectResult<bool>(*adapter, *stub, &Caller::GiveBoolean, true);
    ExpectResult<Pellum::Optional<bool>>(*adapter, *stub, &Caller::GiveOptionalBoolean, false);
    ExpectResult<signed char>(*adapter, *stub, &Caller::GiveByte, 3);
    ExpectResult<float>(*adapter, *stub, &Caller::GiveFloat, 0.5F);
    ExpectResult<Pellum::System::DateTime>(*adapter, *stub, &Caller::GiveDateTime, kTime);
    ExpectResult<std::vector<std::uint8_t>>(*adapter, *stub, &Caller::GiveBinary, {1, 2});
    ExpectResult<Tavik::TypeName>(*adapter, *stub, &Caller::GiveTypeName, Tavik::TypeName("t"));
    ExpectResult<Tavik::PropertyPath>(*adapter, *stub, &Caller::GivePropertyPath, Tavik::PropertyPath("p"));
    ExpectResult<Colour>(*adapter, *stub, &Caller::GiveColour, Colour::blue);
    ExpectResult<Pellum::Optional<Colour>>(*adapter, *stub, &Caller::GetShade, Colour::red);
    ExpectResult<Sample::Point>(*adapter, *stub, &Caller::GiveObject);
    ExpectResult<Sample::ThingBroken>(*adapter, *stub, &Caller::GiveFault);
    ExpectResult<MoRef>(*adapter, *stub, &Caller::GiveReference);
    ExpectResult<Any>(*adapter, *stub, &Caller::GiveAny);
    ExpectResult<Tavik::DataArray<Sample::Point>>(*adapter, *stub, &Caller::GiveObjects);
    ExpectResult<Tavik::Array<Text>>(*adapter, *stub, &Caller::GiveTexts);
    ExpectResult<Tavik::Array<Ref<MoRef>>>(*adapter, *stub, &Caller::GiveReferences);
    ExpectResult<Tavik::Array<Colour>>(*adapter, *stub, &Caller::GiveColours);
}

TEST_F(Stubs, LetGoOfTheArgumentsWhenACallFails) {
    const auto point = MakeRef<Sample::Point>();
    Ref<Pellum::System::ScheduledItem> item;
    const Tavik::Completion completion;
    int during = 0;
    adapter->onCall = [&](const Tavik::StubAdapter::Call& call) {
        during = call.arguments[0]->GetRefCount();
        throw Pellum::Exception("the connection is gone");
    };
    EXPECT_THROW(stub->Objects(point.Get(), nullptr, nullptr, nullptr, nullptr), Pellum::Exception);
    EXPECT_EQ(during, 2);
    EXPECT_EQ(point->GetRefCount(), 1);
    EXPECT_THROW(
        stub->Objects(point.Get(), nullptr, nullptr, nullptr, nullptr, completion, item), Pellum::Exception);
    EXPECT_EQ(point->GetRefCount(), 1);
}

TEST_F(Stubs, HandOnWhatAnAsynchronousCallIsGiven) {
    const Tavik::Completion completion = [](auto*, auto*, auto*) {};
    Ref<Pellum::System::ScheduledItem> item;

    const struct {
        std::function<void()> call;
        const char* method;
        const char* sent;
    } rows[] = {
        {[&] { stub->Nothing(completion, item); }, "nothing", ""},
        {[&] { stub->Texts("a", {}, "c", "d", completion, item); }, "texts",
         R"(string "a", null, string "c", string "d")"},
        {[&] { stub->Optionals(1, {}, true, {}, Colour::red, 7, completion, item); }, "optionals",
         R"(int 1, null, boolean true, null, SampleColour "red", int 7)"},
        {[&] { stub->GiveInt(completion, item); }, "giveInt", ""},
        {[&] { stub->GiveObject(completion, item); }, "giveObject", ""},
        {[&] { stub->GetWhen(completion, item); }, "when", ""},
    };

    for (const auto& row : rows) {
        adapter->completion = nullptr;
        adapter->item = nullptr;
        row.call();
        EXPECT_STREQ(adapter->method->GetName(), row.method);
        EXPECT_EQ(Sent(), row.sent);
        EXPECT_EQ(adapter->completion, &completion);
        EXPECT_EQ(adapter->item, &item);
    }
}

TEST_F(Stubs, OfDerivedTypesCallTheBaseByItsOwnMethods) {
    const auto box = MakeStub<Sample::BoxHolderStub>(Sample::gSampleBoxHolderTypeInfo);
    const auto content = MakeRef<Sample::BoxedPoint>();
    adapter->answer = content;
    Ref<Sample::BoxedPoint> boxed;
    box->GetContent(boxed);
    EXPECT_EQ(adapter->method, Sample::gSampleBoxHolderMethodObjects[1]);
    Ref<Sample::OpenPoint> open;
    static_cast<Sample::PointHolder&>(*box).GetContent(open);
    EXPECT_EQ(adapter->method, Sample::gSamplePointHolderMethodObjects[0]);
    Ref<Any> any;
    static_cast<Sample::Holder&>(*box).GetContent(any);
    EXPECT_EQ(adapter->method, Sample::gSampleHolderMethodObjects[1]);
    EXPECT_TRUE(boxed == content.Get() && open == content.Get() && any == content.Get());
    box->Touch();
    EXPECT_EQ(adapter->method, Sample::gSampleHolderMethodObjects[0]);
    box->TouchBox();
    EXPECT_EQ(adapter->method, Sample::gSampleBoxHolderMethodObjects[0]);
    // Read when the call is made, not when the stub is.
    Tavik::ManagedMethod* const touch = std::exchange(Sample::gSampleHolderMethodObjects[0], nullptr);
    EXPECT_THROW(box->Touch(), Pellum::Exception);
    Sample::gSampleHolderMethodObjects[0] = touch;
}

/// Implements the getters of the most derived type and no others.
class BoxServer final : public Sample::BoxHolder, public Tavik::ServerObject {
public:
    explicit BoxServer(Sample::BoxedPoint* point)
        : ServerObject(Sample::gSampleBoxHolderTypeInfo, "b"), m_point(point) {}

    using BoxHolder::GetContent;

    void GetContent(Ref<Sample::BoxedPoint>& result) override { result = m_point; }

    std::string GetLabel() override { return "label"; }

    void Touch() override {}

    void TouchBox() override {}

private:
    ~BoxServer() override = default;

    const Ref<Sample::BoxedPoint> m_point;
};

TEST_F(Stubs, AndServersAnswerInheritedGettersWithTheirOwn) {
    const auto point = MakeRef<Sample::BoxedPoint>();
    const auto server = MakeRef<BoxServer>(point.Get());
    EXPECT_EQ(server->_GetType(), Tavik::GetMoType<Sample::BoxHolder>());
    Ref<Sample::OpenPoint> open;
    static_cast<Sample::PointHolder&>(*server).GetContent(open);
    EXPECT_EQ(open, point.Get());
    for (const auto* type : {Tavik::GetMoType<Sample::Holder>(), Tavik::GetMoType<Sample::BoxHolder>()}) {
        Tavik::Arguments none;
        Ref<Any> result;
        type->GetManagedTypeInfo().dispatch(server.Get(), 1, none, result);
        EXPECT_EQ(result, point.Get());
    }
    EXPECT_EQ(server->GetRefCount(), 1);
}

TEST_F(Stubs, HaveFunctionsForAwkwardNames) {
    using Sample::Namespace::Class::NarrowStub;
    const auto narrow = MakeStub<NarrowStub>(Sample::gSampleNamespaceClassNarrowTypeInfo);
    narrow->NarrowStub_();
    EXPECT_STREQ(adapter->method->GetName(), "narrowStub");
    narrow->Pellum("a", 1, 2, 3, 4);
    EXPECT_EQ(Sent(), R"(string "a", int 1, int 2, int 3, int 4)");
    Ref<Tavik::DataArray<Sample::Namespace::Class::Class>> many;
    narrow->Tavik("r", 1, nullptr, many);
    EXPECT_EQ(Sent(), R"(string "r", int 1, null)");
    EXPECT_STREQ(NarrowStub::METHOD_NARROWSTUB, "sample.namespace.class.Narrow.narrowStub");
}

} // namespace
