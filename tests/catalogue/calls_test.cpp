#include "tavik/codec/json/message_codec.h"
#include "tavik/fault/runtime_faults.h"
#include "tavik/managed/async.h"
#include "tavik/managed/create_stub.h"
#include "tavik/managed/stub_impl.h"
#include "tavik/rpc/dispatcher.h"
#include "tavik/rpc/in_process_adapter.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/print.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"
#include "tests/support/recording_adapter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <typeinfo>

/// Every call of the interface, from a client's stub to a server's object and back, as messages.
namespace {

using namespace CatalogueTests;
using Pellum::MakeRef;
using Pellum::Ref;
using Tavik::Any;
using Tavik::CallValue;
using Tavik::DataObjectType;
using Tavik::ManagedMethod;
using Tavik::ManagedObjectType;
using Tavik::MethodFault;
using Tavik::TypeKind;
using Tavik::Version;

/// How a call is made. Only the first way goes through the method of the client's stub.
enum class Way { Dispatched, Invoked, Started };
constexpr std::size_t kWayCount = 3;

/// A callable of an object, which may have it from a base of its type, and a way to call it.
struct Callee {
    const ManagedObjectType& type;
    const ManagedMethod& method;
    Tavik::StubImpl& stub;
    Way way;

    bool IsOwn() const { return &method.GetOwner() == &type; }

    Ref<Any> Call(Tavik::Arguments arguments) const {
        const Tavik::ManagedTypeInfo& owner = method.GetOwner().GetManagedTypeInfo();
        ManagedMethod* const object = owner.methodObjects[method.GetIndex()];
        Ref<Any> result;
        if (way == Way::Dispatched) {
            owner.dispatch(&stub, method.GetIndex(), arguments, result);
        } else if (way == Way::Invoked) {
            stub._Invoke_Task(object, arguments, result);
        } else {
            result = Tavik::StartFuture<Ref<Any>>([&](auto& done, auto& item) {
                         stub._StartInvoke_Task(object, arguments, done, item);
                     }).Get();
        }
        return result;
    }

    /// The fault that the call ends by, which has to be thrown as its own class; an empty one after any other
    /// end.
    template <class F>
    Ref<F> Catch(const Tavik::Arguments& arguments) const {
        try {
            Call(arguments);
            ADD_FAILURE() << "the call ended without a fault";
        } catch (MethodFault::Exception& exception) {
            const std::unique_ptr<Pellum::Exception> expected(exception.GetFault()->CreateException());
            const Pellum::Exception& own = *expected;
            EXPECT_EQ(typeid(exception), typeid(own));
            if (auto* fault = dynamic_cast<F*>(exception.GetFault())) {
                return Ref<F>(fault);
            }
            ADD_FAILURE() << exception.what();
        }
        return MakeRef<F>();
    }
};

/// All types that have stubs.
const std::vector<const ManagedObjectType*>& GetCallableTypes() {
    static const std::vector<const ManagedObjectType*> types = [] {
        auto all = GetManagedTypes();
        std::erase_if(all, [](const auto* type) { return type->GetManagedTypeInfo().createStub == nullptr; });
        return all;
    }();
    return types;
}

/// The method itself, but for a getter that a type derived from its owner declares again just so: that one
/// is called on objects of `derived`.
const ManagedMethod* FindMostDerived(const ManagedMethod& method, const ManagedObjectType& derived) {
    for (const ManagedObjectType* type = &derived; method.IsPropertyGetter() && type != &method.GetOwner();
         type = type->GetBaseType()) {
        for (const auto& other : type->GetMethodObjects()) {
            const Tavik::PropertyDescriptor* property = other->GetPropertyDescriptor();
            if (property != nullptr && property->name == std::string_view(method.GetName())
                && property->type == method.GetPropertyDescriptor()->type) {
                return other.get();
            }
        }
    }
    return &method;
}

/// A value as a peer of the version is sent it; empty when it has no form there.
std::string Write(const Any* value, const CallValue& declared, const Version& version) {
    const Tavik::PrintOptions options{true, 0, &version, declared.type};
    std::string text;
    Tavik::PrintProblem problem;
    return Tavik::TryPrint(value, options, text, problem) ? text : "";
}

/// Nothing of what was received is what was given.
void ExpectEqualCopy(const Any* given, const Any* received) {
    EXPECT_THAT(FindDifferences(given, received), testing::IsEmpty());
    if (given == nullptr || received == nullptr) {
        return;
    }
    EXPECT_TRUE(given->_IsEqual(received, false));
    const std::set<const Any*> parts = CollectParts(*given);
    for (const Any* part : CollectParts(*received)) {
        EXPECT_EQ(parts.count(part), 0U) << part->ToString();
    }
}

/// Whether null is understood where such a value is expected; as a required argument it is refused later.
bool MayBeNull(const CallValue& value) {
    const TypeKind kind = value.type->GetKind();
    return value.descriptor->IsOptional() || kind == TypeKind::Any || kind == TypeKind::Array
        || kind >= TypeKind::Data;
}

/// An object of every managed type, which remembers how it was called, and a connection to them.
class CatalogueCalls : public testing::Test {
protected:
    CatalogueCalls() {
        for (const ManagedObjectType* type : GetCallableTypes()) {
            m_objects->Register(*CreateStub(*type, *m_server, nullptr));
        }
    }

    /// Calls `check` for everything that can be called on an object of every type, in every way.
    void ForEachCallable(
        const std::function<void(const Callee&)>& check, const Version* version = nullptr) const {
        const auto context = MakeRef<Tavik::RequestContext>()->WithVersion(version);
        for (const ManagedObjectType* type : GetCallableTypes()) {
            const auto stub = CreateStub(*type, *m_connection, context.Get());
            ASSERT_EQ(stub->_GetType(), type); // which the class looks up
            for (const ManagedObjectType* base = type; base != nullptr; base = base->GetBaseType()) {
                for (std::size_t i = 0; i < kWayCount * base->GetMethodObjects().size(); ++i) {
                    const ManagedMethod& method = *base->GetMethodObjects()[i / kWayCount];
                    const auto way = static_cast<Way>(i % kWayCount);
                    SCOPED_TRACE(
                        std::string(type->GetName()) + ": " + base->GetName() + '.' + method.GetName()
                        + ", way " + std::to_string(i % kWayCount));
                    check({*type, method, dynamic_cast<Tavik::StubImpl&>(*stub), way});
                    ASSERT_FALSE(HasFailure()) << "and no further";
                }
            }
        }
    }

    /// A value of that description, or null when it may be unset; what has a form in the version.
    Ref<Any> MakeValue(const CallValue& declared, const Version* version = nullptr) {
        for (int i = 0; declared.type != nullptr && i < 1000; ++i) {
            Ref<Any> value = m_random.MakeValue(*declared.descriptor);
            if (value == nullptr || version == nullptr || !Write(value.Get(), declared, *version).empty()) {
                return value;
            }
        }
        EXPECT_EQ(declared.type, nullptr) << "has no value in " << version->GetName();
        return nullptr;
    }

    Tavik::Arguments MakeArguments(const ManagedMethod& method, const Version* version = nullptr) {
        Tavik::Arguments arguments;
        for (const CallValue& parameter : method.GetParameters()) {
            arguments.push_back(MakeValue(parameter, version));
        }
        return arguments;
    }

    void ExpectReached(const Callee& callee) const {
        EXPECT_EQ(m_server->method, FindMostDerived(callee.method, callee.type));
        EXPECT_EQ(m_server->target->GetId(), callee.type.GetName());
        ASSERT_EQ(m_server->arguments.size(), callee.method.GetParameters().size());
    }

    /// What happened on the server is hidden, but for a correlation identifier, which its log knows.
    void ExpectSystemError(const Callee& callee, const Tavik::Arguments& arguments) {
        const auto error = callee.Catch<Orlin::Fault::SystemError>(arguments);
        EXPECT_NE(error->GetCorrelationId(), "");
        const std::lock_guard lock(m_mutex);
        EXPECT_EQ(error->GetCorrelationId(), m_lastFailure);
    }

    const Ref<TestSupport::RecordingAdapter> m_server = MakeRef<TestSupport::RecordingAdapter>();

private:
    static Ref<Tavik::ManagedObject> CreateStub(
        const ManagedObjectType& type, Tavik::StubAdapter& adapter, Tavik::RequestContext* context) {
        const auto reference = MakeRef<Tavik::MoRef>(&type.GetInfo(), type.GetName());
        return Tavik::CreateStub(reference.Get(), &adapter, context);
    }

    void Remember(const Tavik::CallFailure& failure) {
        const std::lock_guard lock(m_mutex);
        m_lastFailure = failure.correlationId;
    }

    TestSupport::RandomObjects m_random;
    std::mutex m_mutex;
    std::string m_lastFailure;
    const Ref<Tavik::ObjectTable> m_objects = MakeRef<Tavik::ObjectTable>();
    const Ref<Tavik::Dispatcher> m_dispatcher = MakeRef<Tavik::Dispatcher>(
        m_objects.Get(), MakeRef<Tavik::AllowAll>().Get(),
        [this](const auto& failure) { Remember(failure); });
    const Ref<Tavik::InProcessAdapter> m_connection =
        MakeRef<Tavik::InProcessAdapter>(std::make_unique<Tavik::Json::MessageCodec>(), m_dispatcher.Get());
};

TEST_F(CatalogueCalls, CarryArgumentsAndResults) {
    std::set<std::pair<Way, const ManagedMethod*>> own;
    std::size_t unset = 0;
    ForEachCallable([&](const Callee& callee) {
        for (int round = 0; round < 3; ++round) {
            const Tavik::Arguments given = MakeArguments(callee.method);
            m_server->answer = MakeValue(callee.method.GetResult());
            const Ref<Any> result = callee.Call(given);
            ExpectReached(callee);
            for (std::size_t i = 0; i < given.size(); ++i) {
                unset += given[i] == nullptr ? 1 : 0;
                ExpectEqualCopy(given[i].Get(), m_server->arguments[i].Get());
            }
            ExpectEqualCopy(m_server->answer.Get(), result.Get());
        }
        if (callee.IsOwn()) {
            own.emplace(callee.way, m_server->method);
        }
    });
    EXPECT_GT(own.size(), kWayCount * (107 + 40));
    EXPECT_GT(unset, 100U);
}

TEST_F(CatalogueCalls, CarryNullAndNoResultOfAnotherClass) {
    ForEachCallable([&](const Callee& callee) {
        const CallValue& declared = callee.method.GetResult();
        const Tavik::Arguments arguments = MakeArguments(callee.method);
        m_server->answer = nullptr;
        if (declared.type == nullptr || MayBeNull(declared)) {
            EXPECT_EQ(callee.Call(arguments), nullptr);
        } else {
            ExpectSystemError(callee, arguments);
        }
        if (declared.type != nullptr && declared.type->GetKind() != TypeKind::Any) {
            m_server->answer = GetUnrelatedType(*declared.type, 7).New();
            ExpectSystemError(callee, arguments);
        }
    });
}

TEST_F(CatalogueCalls, CarryFaultsThatAreDeclared) {
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    const DataTypes types = TestSupport::AllDataTypes();
    TestSupport::RandomObjects random;
    std::size_t declared = 0;
    std::size_t derived = 0;
    ForEachCallable([&](const Callee& callee) {
        const Tavik::Arguments arguments = MakeArguments(callee.method);
        const Tavik::MethodDescriptor* const descriptor = callee.method.GetMethodDescriptor();
        DataTypes passing;
        for (std::size_t i = 0; descriptor != nullptr && descriptor->faults[i] != nullptr; ++i) {
            passing.push_back(
                dynamic_cast<const DataObjectType*>(registry.FindByInfo(descriptor->faults[i])));
        }
        const DataTypes roots = passing;
        declared += callee.IsOwn() ? roots.size() : 0;
        DataTypes others;
        for (const DataObjectType* type : types) {
            const auto root = std::find_if(
                roots.begin(), roots.end(), [&](const auto* one) { return Derives(*type, *one); });
            if (type->IsFault() && (root == roots.end() || type != *root)) {
                (root == roots.end() ? others : passing).push_back(type);
            }
        }
        derived += passing.size() - roots.size();
        if (!others.empty()) { // else the method declares the base of all faults
            passing.push_back(others[(declared + derived) % others.size()]);
        }
        for (std::size_t i = 0; i < passing.size(); ++i) {
            SCOPED_TRACE(passing[i]->GetName());
            const Ref<Any> thrown(random.Make(*passing[i]));
            m_server->onCall = [&](const auto&) { dynamic_cast<MethodFault&>(*thrown).Throw(); };
            if (!others.empty() && i + 1 == passing.size()) {
                ExpectSystemError(callee, arguments);
            } else {
                ExpectEqualCopy(thrown.Get(), callee.Catch<MethodFault>(arguments).Get());
            }
        }
        m_server->onCall = [](const auto&) { throw std::runtime_error("the disk is gone"); };
        ExpectSystemError(callee, arguments);
    });
    EXPECT_GT(declared, kWayCount * 102);
    EXPECT_GT(derived, 0U);
}

TEST_F(CatalogueCalls, ArePartOfVersions) {
    std::size_t refused = 0;
    for (std::size_t number = 0; number < kVersionCount; ++number) {
        const Version& version = GetVersion(number);
        SCOPED_TRACE(version.GetName());
        const auto check = [&](const Callee& callee) {
            const CallValue& declared = callee.method.GetResult();
            if (!Has(number, callee.method.GetVersionName())
                || !Has(number, callee.method.GetOwner().GetInfo().version)) {
                ++refused;
                callee.Catch<Orlin::Fault::InvalidRequest>(MakeArguments(callee.method));
                return;
            }
            const Tavik::Arguments given = MakeArguments(callee.method, &version);
            m_server->answer = MakeValue(declared, &version);
            const Ref<Any> result = callee.Call(given);
            ExpectReached(callee);
            for (std::size_t i = 0; i < given.size(); ++i) {
                const CallValue& parameter = callee.method.GetParameters()[i];
                const Any* sent = Has(number, parameter.descriptor->version) ? given[i].Get() : nullptr;
                EXPECT_EQ(
                    Write(sent, parameter, version), Write(m_server->arguments[i].Get(), parameter, version));
            }
            EXPECT_EQ(
                Write(m_server->answer.Get(), declared, version), Write(result.Get(), declared, version));
        };
        ForEachCallable(check, &version);
    }
    EXPECT_GT(refused, kWayCount * 180);
}

TEST_F(CatalogueCalls, RefuseArgumentsThatAreMissingOrWrong) {
    const Ref<Any> text = MakeRef<Tavik::Primitive<std::string>>("a");
    const Ref<Any> flag(Tavik::Primitive<bool>::Factory::Get(true));
    const Ref<Any> reference = MakeRef<Tavik::MoRef>(&GetCallableTypes().front()->GetInfo(), "r");
    std::size_t missing = 0;
    ForEachCallable([&](const Callee& callee) {
        for (std::size_t i = 0; i < callee.method.GetParameters().size(); ++i) {
            const CallValue& parameter = callee.method.GetParameters()[i];
            SCOPED_TRACE(parameter.descriptor->name);
            // A stub's method has parameters that not everything fits. Behind it nobody looks at classes
            // before the server does.
            const auto expectRefused = [&](const Ref<Any>& value, bool fitsStub) {
                SCOPED_TRACE(value != nullptr ? value->ToString() : "null");
                Tavik::Arguments arguments = MakeArguments(callee.method);
                arguments[i] = value;
                if (callee.way == Way::Dispatched && !fitsStub) {
                    EXPECT_THROW(callee.Call(arguments), Pellum::TypeMismatchException);
                } else {
                    const auto fault = callee.Catch<Orlin::Fault::InvalidArgument>(arguments);
                    EXPECT_EQ(fault->GetInvalidProperty(), parameter.descriptor->name);
                }
            };
            if (!parameter.descriptor->IsOptional()) {
                expectRefused(nullptr, MayBeNull(parameter));
                missing += callee.IsOwn() ? 1 : 0;
            }
            const auto* data = dynamic_cast<const DataObjectType*>(parameter.type);
            const bool isOpen = data != nullptr && data->IsOpen();
            const DataObjectType& unrelated = GetUnrelatedType(*parameter.type, missing);
            for (const Ref<Any>& value :
                 {text, flag, reference, Ref<Any>(unrelated.New()), Ref<Any>(unrelated.NewArray())}) {
                const bool isReference = value == reference; // all are of one class
                const bool fits = parameter.type->GetKind() == TypeKind::Any
                               || value->_GetType()->IsA(parameter.type)
                               || (isOpen && isReference && callee.way != Way::Dispatched); // reads anything
                if (!fits) {
                    expectRefused(value, isReference && parameter.type->GetKind() == TypeKind::Managed);
                }
            }
        }
    });
    EXPECT_EQ(m_server->count, 0);
    EXPECT_GT(missing, kWayCount * 124);
}

} // namespace
