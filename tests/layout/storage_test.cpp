#include "tavik/value/data_array.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/scalar_array.h"
#include "tests/layout/raw_memory.h"
#include "tests/sample/api/colour.h"
#include "tests/sample/api/level5.h"
#include "tests/sample/api/optional_kinds.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/required_kinds.h"
#include "tests/sample/api/thing.h"
#include "tests/sample/api/thing_broken.h"
#include "types/api/agent/internal/fault/ssl_certificate_error.h"
#include "types/api/core/computer_spec.h"

#include <gtest/gtest.h>

/// How objects hold their properties, byte by byte.
namespace {

using namespace LayoutTests;
using Pellum::MakeRef;
using Pellum::Ref;

constexpr std::size_t kPointerSize = sizeof(void*);

/// An offset on 32-bit Linux, on 32-bit Windows and on 64-bit hosts. The first two differ behind 64-bit
/// numbers, which compilers align to 4 bytes there, and to 8 here.
constexpr std::size_t At(std::size_t linux32, std::size_t windows32, std::size_t wide) {
#ifdef _WIN32
    static_cast<void>(linux32);
    return kIs32Bit ? windows32 : wide;
#else
    static_cast<void>(windows32);
    return kIs32Bit ? linux32 : wide;
#endif
}

constexpr std::size_t At(std::size_t narrow, std::size_t wide) {
    return At(narrow, narrow, wide);
}

/// The text of a string object at an address: where its characters are, then how many.
std::string_view ReadString(const void* address) {
    const Raw text(address);
    return {static_cast<const char*>(text.Pointer(0)), text.Read<std::size_t>(kPointerSize)};
}

std::string_view ReadString(const Raw& object, std::size_t offset) {
    return ReadString(object.Address(offset));
}

template <class T>
std::ptrdiff_t Distance(const void* begin, const void* end) {
    return static_cast<const T*>(end) - static_cast<const T*>(begin);
}

TEST(Storage, OfALocation) {
    const auto location = MakeRef<Morvane::ComputerSpec::LiveComputerLocation>();
    const Raw object(location.Get());
    EXPECT_EQ(object.Read<std::size_t>(kPointerSize), 1U); // the count, behind the table
    for (const std::size_t offset : {At(40, 56), At(44, 64), At(48, 72), At(80, 120), At(84, 128)}) {
        EXPECT_EQ(object.Pointer(offset), nullptr) << offset;
    }
    EXPECT_EQ(object.Word(At(32, 48)), 0U);
    EXPECT_EQ(object.Byte(At(36, 52)), 0U);
    EXPECT_EQ(object.Byte(At(76, 112)), 0xFFU);
    location->SetHostname("source.example");
    location->SetPort(902);
    location->SetUsername("user");
    location->SetPassword("password");
    location->SetClientPrivateKey("key");
    location->SetOsType("a long name of an operating system");
    location->SetVerifyPeer(false);
    location->SetSslThumbprint("thumbprint");
    location->SetSslCertificate("certificate");
    EXPECT_EQ(ReadString(object, At(8, 16)), "source.example");
    EXPECT_EQ(object.Word(At(32, 48)), 902U);
    EXPECT_EQ(object.Byte(At(36, 52)), 1U);
    EXPECT_EQ(ReadString(object.Pointer(At(40, 56))), "user");
    EXPECT_EQ(ReadString(object.Pointer(At(44, 64))), "password");
    EXPECT_EQ(ReadString(object.Pointer(At(48, 72))), "key");
    EXPECT_EQ(ReadString(object, At(52, 80)), "a long name of an operating system");
    EXPECT_EQ(object.Byte(At(76, 112)), 0U);
    EXPECT_EQ(ReadString(object.Pointer(At(80, 120))), "thumbprint");
    EXPECT_EQ(ReadString(object.Pointer(At(84, 128))), "certificate");
    EXPECT_EQ(sizeof(*location), At(88, 136));
    location->SetVerifyPeer(true);
    EXPECT_EQ(object.Byte(At(76, 112)), 1U);
    location->UnsetVerifyPeer();
    EXPECT_EQ(object.Byte(At(76, 112)), 0xFFU);
    location->UnsetPort(); // leaves the value
    EXPECT_EQ(object.Word(At(32, 48)), 902U);
    EXPECT_EQ(object.Byte(At(36, 52)), 0U);
    location->UnsetSslCertificate();
    EXPECT_EQ(object.Pointer(At(84, 128)), nullptr);
}

/// Values to hold.
struct Held {
    Ref<Sample::Point> point = MakeRef<Sample::Point>();
    Ref<Sample::ThingBroken> fault = MakeRef<Sample::ThingBroken>();
    Ref<Tavik::MethodFault> methodFault = MakeRef<Tavik::MethodFault>();
    Ref<Tavik::MoRef> reference = MakeRef<Tavik::MoRef>(&Sample::gSampleThingTypeInfo, "thing");
    std::vector<std::uint8_t> bytes = {1, 2, 3};
    Pellum::System::DateTime time = Pellum::System::DateTime::FromUtcTime(0x0123456789ABCDEF);
};

/// Gives every property of a class with one of each kind a value.
template <class Kinds>
void FillKinds(Kinds& kinds, const Held& held) {
    kinds.SetStringValue("text");
    kinds.SetIntValue(-2);
    kinds.SetLongValue(-3);
    kinds.SetBooleanValue(true);
    kinds.SetByteValue(-4);
    kinds.SetFloatValue(0.5F);
    kinds.SetDateTimeValue(held.time);
    kinds.SetBinaryValue(held.bytes);
    kinds.SetTypeNameValue(Tavik::TypeName("SamplePoint"));
    kinds.SetPropertyPathValue(Tavik::PropertyPath("a.b"));
    kinds.SetAnyValue(held.point.Get());
    kinds.SetEnumValue(Sample::Colour::blue);
    kinds.SetDataValue(held.point.Get());
    kinds.SetFaultValue(held.fault.Get());
    kinds.SetReferenceValue(held.reference.Get());
    kinds.SetMethodFaultValue(held.methodFault.Get());
    kinds.SetSecretValue("secret");
}

/// Where the members of such a class are.
struct KindOffsets {
    std::size_t string, integer, number64, boolean, byte, real, dateTime, binary, typeName, propertyPath, any,
        enumeration, data, fault, reference, methodFault, secret;
};

/// What is held in the same form whether it is optional or not.
void ExpectKinds(const Raw& object, const KindOffsets& at, const Held& held) {
    EXPECT_EQ(object.Word(at.integer), 0xFFFFFFFEU);
    EXPECT_EQ(object.Read<std::uint64_t>(at.number64), 0xFFFFFFFFFFFFFFFDU);
    EXPECT_EQ(object.Byte(at.boolean), 1U);
    EXPECT_EQ(object.Byte(at.byte), 0xFCU);
    EXPECT_EQ(object.Word(at.real), 0x3F000000U);
    EXPECT_EQ(object.Read<std::uint64_t>(at.dateTime), 0x0123456789ABCDEFU);
    EXPECT_EQ(Raw(object.Pointer(at.binary)).Byte(2), 3U);
    EXPECT_EQ((Distance<char>(object.Pointer(at.binary), object.Pointer(at.binary + kPointerSize))), 3);
    EXPECT_EQ(ReadString(object, at.typeName), "SamplePoint");
    EXPECT_EQ(ReadString(object, at.propertyPath), "a.b");
    EXPECT_EQ(object.Pointer(at.any), static_cast<Tavik::Any*>(held.point.Get()));
    EXPECT_EQ(object.Word(at.enumeration), 2U);
    EXPECT_EQ(object.Pointer(at.data), held.point.Get());
    EXPECT_EQ(object.Pointer(at.fault), held.fault.Get());
    EXPECT_EQ(object.Pointer(at.reference), held.reference.Get());
    EXPECT_EQ(object.Pointer(at.methodFault), held.methodFault.Get());
}

TEST(Storage, OfRequiredProperties) {
    constexpr KindOffsets at = {
        At(8, 16),         At(32, 48),        At(36, 40, 56),    At(44, 48, 64),    At(45, 49, 65),
        At(48, 52, 68),    At(52, 56, 72),    At(60, 64, 80),    At(72, 76, 104),   At(96, 100, 136),
        At(120, 124, 168), At(124, 128, 176), At(128, 132, 184), At(132, 136, 192), At(136, 140, 200),
        At(140, 144, 208), At(144, 148, 216),
    };
    const Held held;
    const auto kinds = MakeRef<Sample::RequiredKinds>();
    FillKinds(*kinds, held);
    const Raw object(kinds.Get());
    ExpectKinds(object, at, held);
    EXPECT_EQ(ReadString(object, at.string), "text");
    EXPECT_EQ(ReadString(object, at.secret), "secret");
}

TEST(Storage, OfOptionalProperties) {
    constexpr KindOffsets at = {
        At(8, 16),         At(12, 24),        At(20, 24, 32),    At(32, 40, 48),    At(33, 41, 49),
        At(36, 44, 52),    At(44, 56, 64),    At(56, 72, 80),    At(72, 88, 112),   At(100, 116, 152),
        At(128, 144, 192), At(132, 148, 200), At(140, 156, 208), At(144, 160, 216), At(148, 164, 224),
        At(152, 168, 232), At(156, 172, 240),
    };
    // The mark stands right behind the value, however wide that is.
    const std::size_t marks[] = {
        at.integer + 4,
        at.number64 + 8,
        at.byte + 1,
        at.real + 4,
        at.dateTime + 8,
        at.binary + 3 * kPointerSize,
        at.typeName + At(24, 32),
        at.propertyPath + At(24, 32),
        at.enumeration + 4,
    };
    const Held held;
    const auto kinds = MakeRef<Sample::OptionalKinds>();
    const Raw object(kinds.Get());
    for (const std::size_t mark : marks) {
        EXPECT_EQ(object.Byte(mark), 0U) << mark;
    }
    EXPECT_EQ(object.Byte(at.boolean), 0xFFU);
    for (const std::size_t offset :
         {at.string, at.any, at.data, at.fault, at.reference, at.methodFault, at.secret}) {
        EXPECT_EQ(object.Pointer(offset), nullptr) << offset;
    }
    FillKinds(*kinds, held);
    ExpectKinds(object, at, held);
    for (const std::size_t mark : marks) {
        EXPECT_EQ(object.Byte(mark), 1U) << mark;
    }
    EXPECT_EQ(ReadString(object.Pointer(at.string)), "text");
    EXPECT_EQ(ReadString(object.Pointer(at.secret)), "secret");
}

TEST(Storage, OfDerivedClassesFollowsThatOfTheirBases) {
    const auto level = MakeRef<Sample::Level5>();
    const Raw object(level.Get());
    level->SetFirst("first");
    const auto point = MakeRef<Sample::Point>();
    level->SetPoint(point.Get());
    level->SetThird(3);
    level->SetLate("late");
    level->SetFourth(true);
    EXPECT_EQ(object.Pointer(At(52, 80)), nullptr);
    const void* const colours = level->GetFifth();
    EXPECT_EQ(ReadString(object, At(8, 16)), "first");
    EXPECT_EQ(object.Pointer(At(32, 48)), point.Get());
    EXPECT_EQ(object.Word(At(36, 56)), 3U);
    EXPECT_EQ(object.Byte(At(40, 60)), 1U);
    EXPECT_EQ(ReadString(object.Pointer(At(44, 64))), "late");
    EXPECT_EQ(object.Byte(At(48, 72)), 1U);
    EXPECT_EQ(object.Pointer(At(52, 80)), colours);
}

TEST(Storage, OfArrays) {
    const auto points = MakeRef<Tavik::DataArray<Sample::Point>>();
    const Raw array(points.Get());
    for (const std::size_t place : {2U, 3U, 4U}) {
        EXPECT_EQ(array.Pointer(place * kPointerSize), nullptr);
    }
    const auto point = MakeRef<Sample::Point>();
    points->Reserve(4);
    points->Append(point.Get());
    points->Append(nullptr);
    EXPECT_EQ(array.Read<std::size_t>(kPointerSize), 1U);
    const void* const begin = array.Pointer(2 * kPointerSize);
    EXPECT_EQ(Raw(begin).Pointer(0), point.Get());
    EXPECT_EQ(Raw(begin).Pointer(kPointerSize), nullptr);
    EXPECT_EQ(Distance<void*>(begin, array.Pointer(3 * kPointerSize)), 2);
    EXPECT_EQ(Distance<void*>(begin, array.Pointer(4 * kPointerSize)), 4);
    EXPECT_EQ(sizeof(*points), 5 * kPointerSize);

    using Colours = Tavik::Array<Sample::Colour>;
    const auto colours = MakeRef<Colours>(std::vector{Sample::Colour::green, Sample::Colour::blue});
    const Raw numbers(Raw(colours.Get()).Pointer(2 * kPointerSize));
    EXPECT_EQ(numbers.Word(0), 1U);
    EXPECT_EQ(numbers.Word(4), 2U);
    EXPECT_EQ(numbers.Address(8), Raw(colours.Get()).Pointer(3 * kPointerSize));
    const auto texts = MakeRef<Tavik::Array<std::string>>(std::vector<std::string>{"a", "b"});
    const Raw strings(Raw(texts.Get()).Pointer(2 * kPointerSize));
    EXPECT_EQ(ReadString(strings, 0), "a");
    EXPECT_EQ(ReadString(strings, At(24, 32)), "b");
}

TEST(Storage, OfAnExceptionEndsWithItsFault) {
    const Morvane::Agent::Internal::Fault::SSLCertificateError::Exception exception("why");
    // Behind the table, the message (two pointers) and the backtrace.
    EXPECT_EQ(Raw(&exception).Pointer(4 * kPointerSize), exception.GetFault());
    EXPECT_EQ(sizeof(exception), 5 * kPointerSize);
}

} // namespace
