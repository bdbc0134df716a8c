#include "tavik/managed/managed_method.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/primitive.h"
#include "tests/layout/raw_memory.h"
#include "tests/support/recording_adapter.h"
#include "types/api/agent/internal/fault/ssl_certificate_error.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/diagnostic_manager_stub.h"
#include "types/api/core/session_manager_stub.h"
#include "types/api/core/user_session.h"
#include "types/api/info/storage_info.h"

#include <gmock/gmock.h>

#include <memory>
#include <sstream>

/// The order of virtual functions, by calling what stands in the tables.
namespace {

using namespace LayoutTests;
using Pellum::MakeRef;
using Pellum::Ref;
using Tavik::Any;
using testing::HasSubstr;

/// The compilers used here put two functions into a table for a destructor that foreign callers know as one:
/// in front of the one that frees the storage stands one that does not.
constexpr std::size_t kExtraDestructor = 1;

/// Functions of values, faults and exceptions are counted from 1, the deleting destructor.
constexpr std::size_t SlotOf(std::size_t number) {
    return number - 1 + kExtraDestructor;
}

/// Interfaces and stubs begin with what they share: counting and texts (four), the destructor, the reference
/// and the end of registration, the type.
constexpr std::size_t kFirstOwnSlot = 4 + (1 + kExtraDestructor) + 2 + 1;

/// Calls what stands in a slot of the object's table as a member function of that type: a pointer to a
/// virtual member function is its place in the table, and one.
template <class Member, class Object, class... Arguments>
decltype(auto) CallSlot(Object& object, std::size_t slot, Arguments&&... arguments) {
    const std::size_t representation[2] = {slot * sizeof(void*) + 1, 0};
    Member member = nullptr;
    static_assert(sizeof(member) == sizeof(representation));
    std::memcpy(&member, representation, sizeof(member));
    return (object.*member)(std::forward<Arguments>(arguments)...);
}

/// A null pointer to a member function with the same signature, of another class.
template <class Object, class Result, class Class, class... Parameters>
auto OfClass(Result (Class::* /*type*/)(Parameters...)) {
    return static_cast<Result (Object::*)(Parameters...)>(nullptr);
}

/// The virtual function that has run last, of those that can not be told by what they return.
const char* lastCall = "";

template <class T>
T Tell(const char* name, T result) {
    lastCall = name;
    return result;
}

using Location = Morvane::ComputerSpec::LiveComputerLocation;
using Fault = Morvane::Agent::Internal::Fault::SSLCertificateError;

/// Tells of calls that the class itself does not show.
template <class Base>
class Telling : public Base {
public:
    ~Telling() override { lastCall = "destructor"; }

    Tavik::DataObjectType* _GetDataType() const override {
        return Tell("_GetDataType", Base::_GetDataType());
    }
};

class TellingFault : public Telling<Fault> {
public:
    [[noreturn]] void ThrowInternal() override { throw std::string("ThrowInternal"); }

    [[noreturn]] void Throw() override { throw std::string("Throw"); }
};

/// The functions that every value has; `value` and `other` differ in the property `path` and in nothing else.
template <class Value>
void ExpectValueOrder(Value& value, const Any& other, const std::string& path) {
    EXPECT_EQ(CallSlot<decltype(&Any::ToString)>(value, SlotOf(2)), value.ToString());
    lastCall = "";
    EXPECT_EQ(CallSlot<decltype(&Any::_GetType)>(value, SlotOf(3)), value._GetType());
    EXPECT_STREQ(lastCall, "");
    const Ref<Any> clone(CallSlot<decltype(&Any::_Clone)>(value, SlotOf(4)));
    EXPECT_NE(clone, &value);
    EXPECT_EQ(clone->ToString(), value.ToString());
    EXPECT_TRUE(CallSlot<decltype(&Any::_IsEqual)>(value, SlotOf(5), clone.Get(), false));
    EXPECT_FALSE(CallSlot<decltype(&Any::_IsEqual)>(value, SlotOf(5), &other, false));
    Tavik::PropertyDiffSet diffs;
    CallSlot<decltype(&Any::_DiffProperties)>(value, SlotOf(6), &other, std::string("at"), diffs);
    EXPECT_EQ(std::vector<std::string>(diffs.begin(), diffs.end()), std::vector<std::string>{path});
}

template <class Value>
void ExpectDataObjectOrder(Value& value, const Any& other, const std::string& path) {
    ExpectValueOrder(value, other, path);
    EXPECT_EQ(
        CallSlot<decltype(&Tavik::DataObject::_GetDataType)>(value, SlotOf(7)),
        Tavik::TypeRegistry::Instance().FindByName(value._GetType()->GetName()));
    EXPECT_STREQ(lastCall, "_GetDataType");
}

class VirtualOrder : public testing::Test {
protected:
    VirtualOrder() { Tavik::TypeRegistry::Instance().Load(); }
};

using Destructor = void (Any::*)();

TEST_F(VirtualOrder, OfADataObject) {
    auto* const location = new Telling<Location>;
    location->SetHostname("a");
    const auto other = MakeRef<Location>();
    other->SetHostname("b");
    ExpectDataObjectOrder(*location, *other, "at.hostname");
    // The class's own table, whose clone is of the class.
    const Ref<Any> clone(CallSlot<decltype(&Any::_Clone)>(*other, SlotOf(4)));
    EXPECT_NE(dynamic_cast<Location*>(clone.Get()), nullptr);
    lastCall = "";
    CallSlot<Destructor>(*location, SlotOf(1));
    EXPECT_STREQ(lastCall, "destructor");
}

TEST_F(VirtualOrder, OfAFault) {
    auto* const fault = new TellingFault;
    fault->IncRef();
    fault->SetWhy("a");
    const auto other = MakeRef<Fault>();
    other->SetWhy("b");
    ExpectDataObjectOrder(*fault, *other, "at.why");
    EXPECT_EQ(
        &CallSlot<decltype(&Tavik::MethodFault::GetHttpMapping)>(*fault, SlotOf(8)),
        &fault->GetHttpMapping());
    using Throw = void (Tavik::MethodFault::*)();
    EXPECT_THAT([&] { CallSlot<Throw>(*fault, SlotOf(9)); }, testing::Throws<std::string>("ThrowInternal"));
    EXPECT_THAT([&] { CallSlot<Throw>(*fault, SlotOf(10)); }, testing::Throws<std::string>("Throw"));
    EXPECT_THROW(CallSlot<Throw>(*other, SlotOf(9)), Fault::Exception);
    EXPECT_THROW(CallSlot<Throw>(*other, SlotOf(10)), Fault::Exception);
    Tavik::MethodFault::Exception* const exception =
        CallSlot<decltype(&Tavik::MethodFault::CreateException)>(*fault, SlotOf(11));
    EXPECT_EQ(exception->GetFault(), fault);
    delete exception;
    lastCall = "";
    CallSlot<Destructor>(*fault, SlotOf(1));
    EXPECT_STREQ(lastCall, "destructor");
}

TEST_F(VirtualOrder, OfAnException) {
    using Pellum::Throwable;
    const auto fault = MakeRef<Fault>();
    fault->SetWhy("expired");
    Fault::Exception* const exception = fault->CreateException();
    EXPECT_EQ(CallSlot<decltype(&std::exception::what)>(*exception, SlotOf(2)), exception->what());
    EXPECT_EQ(CallSlot<decltype(&Throwable::GetBacktrace)>(*exception, SlotOf(3)), exception->GetBacktrace());
    std::ostringstream text;
    CallSlot<decltype(&Throwable::Dump)>(*exception, SlotOf(4), text);
    EXPECT_THAT(text.str(), HasSubstr("expired"));
    EXPECT_EQ(CallSlot<decltype(&Throwable::Where)>(*exception, SlotOf(5)), exception->Where());
    const std::unique_ptr<Pellum::Exception> clone(
        CallSlot<decltype(&Pellum::Exception::Clone)>(*exception, SlotOf(6)));
    EXPECT_EQ(dynamic_cast<Fault::Exception&>(*clone).GetFault(), fault.Get());
    EXPECT_THROW(CallSlot<decltype(&Pellum::Exception::Throw)>(*exception, SlotOf(7)), Fault::Exception);
    EXPECT_EQ(fault->GetRefCount(), 3);
    CallSlot<void (std::exception::*)()>(*exception, SlotOf(1));
    EXPECT_EQ(fault->GetRefCount(), 2);
}

TEST_F(VirtualOrder, OfAnArray) {
    using Disk = Morvane::Info::StorageInfo::DiskInfo;
    const auto disk = MakeRef<Disk>();
    auto* const disks = new Tavik::DataArray<Disk>;
    disks->Append(disk.Get());
    const auto other = MakeRef<Tavik::DataArray<Disk>>();
    ExpectValueOrder(*disks, *other, "at[0]");
    EXPECT_EQ(CallSlot<decltype(&Tavik::ArrayBase::GetLength)>(*disks, SlotOf(7)), 1U);
    EXPECT_EQ(
        CallSlot<decltype(&Tavik::ArrayBase::_GetElementType)>(*disks, SlotOf(8)), disk->_GetDataType());
    EXPECT_EQ(disk->GetRefCount(), 2);
    CallSlot<Destructor>(*disks, SlotOf(1));
    EXPECT_EQ(disk->GetRefCount(), 1);
}

/// A stub, and which methods it has sent.
template <class Stub>
struct Connected {
    explicit Connected(const Tavik::TypeInfo& type)
        : stub(MakeRef<Stub>(MakeRef<Tavik::MoRef>(&type, "id").Get(), adapter.Get(), nullptr)) {
        adapter->answer = MakeRef<Tavik::Primitive<std::string>>("answer");
    }

    /// Calls a slot of the object's table as a function of the type of `Member`.
    template <class Member, class Object, class... Arguments>
    void Call(Member /*type*/, Object& object, std::size_t slot, Arguments&... arguments) {
        adapter->method = nullptr;
        try {
            CallSlot<Member>(object, slot, arguments...);
        } catch (const Pellum::Exception&) { // what is sent counts, not that the answer is no result of it
        }
        sent.emplace_back(adapter->method == nullptr ? "nothing" : adapter->method->GetName());
    }

    const Ref<TestSupport::RecordingAdapter> adapter = MakeRef<TestSupport::RecordingAdapter>();
    const Ref<Stub> stub;
    std::vector<std::string> sent;
};

// Values to call with.
const std::string text;
const Pellum::Optional<std::string> noText;
std::int64_t number = 0;
Tavik::MoRef* noReference = nullptr;
Morvane::ComputerSpec* noComputer = nullptr;
Tavik::Array<std::string>* noTexts = nullptr;

TEST_F(VirtualOrder, OfAnInterface) {
    using Morvane::SessionManager;
    Connected<Morvane::SessionManagerStub> connected(Morvane::gMorvaneSessionManagerTypeInfo);
    SessionManager& manager = *connected.stub;
    EXPECT_EQ(
        CallSlot<decltype(&Tavik::ManagedObject::_GetType)>(
            static_cast<Tavik::ManagedObject&>(manager), kFirstOwnSlot - 1),
        manager._GetType());
    Ref<Tavik::DataArray<Morvane::UserSession>> sessions;
    Ref<Morvane::UserSession> session;
    Ref<Tavik::Array<std::string>> texts;
    std::size_t slot = kFirstOwnSlot;
    const auto call = [&](auto method, auto&... arguments) {
        connected.Call(method, manager, slot++, arguments...);
    };
    call(&SessionManager::GetSessionList, sessions);
    call(&SessionManager::GetCurrentSession, session);
    call(&SessionManager::GetMessageLocaleList, texts);
    call(&SessionManager::GetSupportedLocaleList, texts);
    call(&SessionManager::GetDefaultLocale);
    call(&SessionManager::Login, text, text, noText, session);
    call(&SessionManager::LoginExtension, text, text, noText, session);
    call(&SessionManager::LoginSession, text, text, noText, session);
    call(&SessionManager::LoginBySSPI, text, noText, session);
    call(&SessionManager::Impersonate, noText, session);
    call(&SessionManager::Logout);
    call(&SessionManager::Terminate, noTexts);
    call(&SessionManager::SetLocale, text);
    EXPECT_THAT(
        connected.sent, testing::ElementsAre(
                            "sessionList", "currentSession", "messageLocaleList", "supportedLocaleList",
                            "defaultLocale", "login", "loginExtension", "loginSession", "loginBySSPI",
                            "impersonate", "logout", "terminate", "setLocale"));
}

/// Tells which of the functions that all stubs have is called.
class TellingStub : public Morvane::DiagnosticManagerStub {
public:
    using DiagnosticManagerStub::DiagnosticManagerStub;
    using Item = Ref<Pellum::System::ScheduledItem>;

    void _Invoke(Tavik::ManagedMethod*, Tavik::Arguments&, Ref<Any>&) override { lastCall = "_Invoke"; }

    void _Invoke_Task(Tavik::ManagedMethod*, Tavik::Arguments&, Ref<Any>&) override {
        lastCall = "_Invoke_Task";
    }

    void _StartInvoke(Tavik::ManagedMethod*, Tavik::Arguments&, const Tavik::Completion&, Item&) override {
        lastCall = "_StartInvoke";
    }

    void _StartInvoke_Task(
        Tavik::ManagedMethod*, Tavik::Arguments&, const Tavik::Completion&, Item&) override {
        lastCall = "_StartInvoke_Task";
    }

    Tavik::StubAdapter* _GetStubAdapter() override { return Tell("_GetStubAdapter", nullptr); }

    Tavik::RequestContext* _GetRequestContext() override { return Tell("_GetRequestContext", nullptr); }

    void _SetRequestContext(Tavik::RequestContext*) override { lastCall = "_SetRequestContext"; }
};

TEST_F(VirtualOrder, OfWhatAllStubsHave) {
    using Tavik::StubImpl;
    Connected<TellingStub> connected(Morvane::gMorvaneDiagnosticManagerTypeInfo);
    StubImpl& stub = *connected.stub;
    EXPECT_EQ(static_cast<void*>(&stub), static_cast<void*>(connected.stub.Get())); // begins the object
    Tavik::ManagedMethod* noMethod = nullptr;
    Tavik::Arguments arguments;
    Ref<Any> result;
    Tavik::Completion completion;
    TellingStub::Item item;
    Tavik::RequestContext* context = nullptr;
    std::size_t slot = kFirstOwnSlot;
    std::vector<std::string> called;
    const auto call = [&]<class Member>(Member /*type*/, auto&... values) {
        lastCall = "nothing";
        CallSlot<Member>(stub, slot++, values...);
        called.emplace_back(lastCall);
    };
    call(&StubImpl::_Invoke, noMethod, arguments, result);
    call(OfClass<StubImpl>(&TellingStub::_Invoke_Task), noMethod, arguments, result);
    call(&StubImpl::_StartInvoke, noMethod, arguments, completion, item);
    call(&StubImpl::_StartInvoke_Task, noMethod, arguments, completion, item);
    call(&StubImpl::_GetStubAdapter);
    call(&StubImpl::_GetRequestContext);
    call(&StubImpl::_SetRequestContext, context);
    EXPECT_THAT(
        called, testing::ElementsAre(
                    "_Invoke", "_Invoke_Task", "_StartInvoke", "_StartInvoke_Task", "_GetStubAdapter",
                    "_GetRequestContext", "_SetRequestContext"));
}

TEST_F(VirtualOrder, OfAStub) {
    using Morvane::DiagnosticManager;
    Connected<Morvane::DiagnosticManagerStub> connected(Morvane::gMorvaneDiagnosticManagerTypeInfo);
    Ref<DiagnosticManager::TaskLogBundleInfo> info;
    const auto expectOrder = [&]<class Object>(Object& object, std::size_t slot) {
        const auto call = [&](auto method, auto&... arguments) {
            connected.Call(OfClass<Object>(method), object, slot++, arguments...);
        };
        connected.sent.clear();
        call(&DiagnosticManager::GenerateTaskLogBundle, noReference, info);
        call(&DiagnosticManager::GenerateLogBundle, noComputer, info);
        call(&DiagnosticManager::RetrieveTaskLogBundle, text, number, number);
        call(&DiagnosticManager::RetrieveTaskLogBundleUrl, text);
        call(&DiagnosticManager::DeleteTaskLogBundle, text);
        EXPECT_THAT(
            connected.sent, testing::ElementsAre(
                                "generateTaskLogBundle", "generateLogBundle", "retrieveTaskLogBundle",
                                "retrieveTaskLogBundleUrl", "deleteTaskLogBundle"));
    };
    expectOrder(static_cast<DiagnosticManager&>(*connected.stub), kFirstOwnSlot);
    // Its own table has them behind the seven functions of all stubs.
    expectOrder(*connected.stub, kFirstOwnSlot + 7);
}

} // namespace
