#pragma once

#include "pellum/error/type_mismatch.h"
#include "pellum/text/demangle.h"
#include "tavik/value/mo_ref.h"
#include "tests/sample/api/caller_stub.h"
#include "tests/support/recording_adapter.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <typeinfo>

/// A boxed value as "int 7", another one as it prints itself.
inline std::string Show(const Pellum::Ref<Tavik::Any>& value) {
    static const std::regex boxed(R"x(^\{"\$type": "([^"]*)", "value": (.*)\}$)x");
    return value ? std::regex_replace(value->ToString(), boxed, "$1 $2") : "null";
}

/// A stub of a type with every kind of method, and what it sends.
class CallerTest : public testing::Test {
public:
    /// A stub of any class for a reference of that type.
    template <class Stub>
    Pellum::Ref<Stub> MakeStub(const Tavik::TypeInfo& type) const {
        return Pellum::MakeRef<Stub>(
            Pellum::MakeRef<Tavik::MoRef>(&type, "id").Get(), adapter.Get(), nullptr);
    }

    /// The arguments of the last call.
    std::string Sent() const {
        std::string text;
        for (const Pellum::Ref<Tavik::Any>& argument : adapter->arguments) {
            text += (text.empty() ? "" : ", ") + Show(argument);
        }
        return text;
    }

    const Pellum::Ref<TestSupport::RecordingAdapter> adapter =
        Pellum::MakeRef<TestSupport::RecordingAdapter>();
    const Pellum::Ref<Sample::CallerStub> stub = MakeStub<Sample::CallerStub>(Sample::gSampleCallerTypeInfo);
};

/// What a call throws when a value is of the wrong class: "expected <- received".
template <class Call>
std::string MismatchOf(Call call) {
    try {
        call();
    } catch (const Pellum::TypeMismatchException& mismatch) {
        return mismatch.GetExpected() + " <- " + mismatch.GetReceived();
    }
    return "nothing";
}

template <class Expected, class Received>
std::string Mismatch() {
    return Pellum::Demangle(typeid(Expected)) + " <- " + Pellum::Demangle(typeid(Received));
}
