#include "pellum/text/demangle.h"
#include "tavik/fault/method_fault.h"
#include "tavik/type/type_registry.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"
#include "tests/support/dotted_names.h"
#include "tests/support/place.h"

#include <gmock/gmock.h>

#include <cxxabi.h>
#include <map>
#include <memory>
#include <typeinfo>

/// Every fault as what is thrown for it, those of the infrastructure and the runtime included.
namespace {

using namespace CatalogueTests;
using Tavik::MethodFault;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using TestSupport::ModuleOfProgram;

/// The class names of an exception and of its bases, most derived first: what a handler compares.
std::vector<std::string> ClassesOf(const std::exception& exception) {
    std::vector<std::string> names;
    const std::type_info* type = &typeid(exception);
    while (type != nullptr) {
        names.push_back(Pellum::Demangle(*type));
        const auto* derived = dynamic_cast<const abi::__si_class_type_info*>(type);
        type = derived != nullptr ? derived->__base_type : nullptr;
    }
    return names;
}

/// "Morvane::Fault::FileNotFound::Exception"; the classes of the runtime's roots have names of their own.
std::string ExceptionClass(const Tavik::Type& type) {
    std::string name = type.GetName();
    if (name == "orlin.MethodFault" || name == "orlin.RuntimeFault") {
        return "Tavik::" + name.substr(name.find('.') + 1) + "::Exception";
    }
    return TestSupport::ToPath(name + ".Exception", "::");
}

std::vector<std::string> ExpectedClasses(const Tavik::DataObjectType& fault) {
    std::vector<std::string> names;
    const Tavik::Type* type = &fault;
    for (; type != nullptr && type->GetKind() == Tavik::TypeKind::Fault; type = type->GetBaseType()) {
        names.push_back(ExceptionClass(*type));
    }
    names.insert(names.end(), {"Pellum::Exception", "Pellum::Throwable", "std::exception"});
    return names;
}

/// Calls `check` with a full fault of every type, whose secrets are marked.
int ForEachFault(const std::function<void(MethodFault&, const Tavik::DataObjectType&)>& check) {
    TestSupport::RandomObjects random(Fill::All);
    std::vector<const Tavik::DataObjectType*> types = TestSupport::AllDataTypes();
    for (const char* name :
         {"MethodFault", "RuntimeFault", "InvalidArgument", "InvalidRequest", "ManagedObjectNotFound",
          "SystemError"}) {
        types.push_back(
            dynamic_cast<const Tavik::DataObjectType*>(Tavik::TypeRegistry::Instance().FindByWireName(name)));
    }
    int count = 0;
    for (const Tavik::DataObjectType* type : types) {
        const std::string_view name = type->GetName();
        const bool isOfTests = name.starts_with("sample.") || name.starts_with("client.");
        if (type->IsFault() && !isOfTests && !testing::Test::HasFailure()) {
            SCOPED_TRACE(type->GetName());
            const Pellum::Ref<Tavik::DataObject> object(random.Make(*type));
            MarkSecrets(*object);
            check(dynamic_cast<MethodFault&>(*object), *type);
            EXPECT_EQ(object->GetRefCount(), 1);
            ++count;
        }
    }
    return count;
}

TEST(CatalogueFaults, AreThrownAsTheirOwnClasses) {
    const int count = ForEachFault([](MethodFault& fault, const Tavik::DataObjectType& type) {
        bool isCaught = false;
        try {
            fault.Throw();
        } catch (MethodFault::Exception& exception) {
            isCaught = true;
            EXPECT_EQ(ClassesOf(exception), ExpectedClasses(type));
            EXPECT_EQ(exception.GetFault(), &fault);
            EXPECT_THAT(exception.Where(), StartsWith(ModuleOfProgram("catalogue_tests") + "+0x"));
            try {
                exception.Throw();
            } catch (const MethodFault::Exception& again) {
                EXPECT_EQ(typeid(again), typeid(exception));
                EXPECT_NE(&again, &exception);
                EXPECT_EQ(fault.GetRefCount(), 3);
            }
            const std::unique_ptr<Pellum::Exception> clone(exception.Clone());
            const std::unique_ptr<MethodFault::Exception> created(fault.CreateException());
            for (const Pellum::Exception* copy :
                 {clone.get(), static_cast<Pellum::Exception*>(created.get())}) {
                EXPECT_EQ(typeid(*copy), typeid(exception));
            }
            EXPECT_EQ(created->GetFault(), &fault);
            EXPECT_EQ(fault.GetRefCount(), 4);
            EXPECT_THAT(created->Where(), StartsWith(ModuleOfProgram("catalogue_tests") + "+0x"));
        }
        EXPECT_TRUE(isCaught);
    });
    EXPECT_EQ(count, 165 + 13 + 6);
}

TEST(CatalogueFaults, SayTheirNamesAndNoSecret) {
    ForEachFault([](MethodFault& fault, const Tavik::DataObjectType& type) {
        const std::unique_ptr<MethodFault::Exception> exception(fault.CreateException());
        EXPECT_THAT(exception->what(), StartsWith(type.GetName()));
        EXPECT_THAT(exception->what(), Not(HasSubstr(kSecretMark)));
    });
}

TEST(CatalogueFaults, HaveTheStatusOfTheirNames) {
    std::map<int, int> counts;
    std::map<std::string, int> byName;
    ForEachFault([&](MethodFault& fault, const Tavik::DataObjectType& type) {
        const int code = fault.GetHttpMapping().code;
        ++counts[code];
        byName[type.GetWireName()] = code;
    });
    const std::map<std::string, int> expected = {
        {"InvalidLogin", 401},
        {"NoClientCertificate", 401},
        {"SSPIChallenge", 401},
        {"NoPermission", 403},
        {"NotFound", 404},
        {"MorvaneSnapshotNotFound", 404},
        {"MorvaneImportSourceLiveNotAdmin", 403},      // by its base
        {"MorvaneJobDeactivationFault", 409},          // by its base
        {"MorvaneBadShareNameFault", 400},             // not that of its base
        {"MorvaneInsufficientHostedDiskSpace", 507},   // by its base, not by that one's
        {"MorvaneNoHostConnectionFromAgent", 502},     // by the base of its base
        {"MorvaneSysinfoQueryConnTimedOutFault", 504}, //
        {"MorvanePropertyInfoFault", 500},             //
        {"MorvaneMorvaneFault", 500},
        {"MethodFault", 500},
        {"InvalidArgument", 400},
        {"InvalidRequest", 400},
        {"ManagedObjectNotFound", 404},
        {"SystemError", 500},
    };
    for (const auto& [name, code] : expected) {
        EXPECT_EQ(byName[name], code) << name;
    }
    // A name in the table that no type has is missing here.
    const std::map<int, int> expectedCounts = {{400, 19}, {401, 3},  {403, 8},  {404, 11},
                                               {409, 16}, {422, 35}, {500, 68}, {502, 15},
                                               {503, 4},  {504, 1},  {507, 4}};
    EXPECT_EQ(counts, expectedCounts);
}

} // namespace
