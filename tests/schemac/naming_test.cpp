#include "schemac/model/naming.h"
#include "tests/schemac/test_support.h"

#include <gtest/gtest.h>

namespace Schemac::Test {
namespace {

using namespace Naming;

TEST(Naming, SnakeCase) {
    const std::pair<const char*, const char*> kCases[] = {
        {"ComputerSpec", "computer_spec"},
        {"SSLCertificateData", "ssl_certificate_data"},
        {"ZabroConnectionSpec", "zabro_connection_spec"},
        {"HyperVComputerLocation", "hyper_v_computer_location"},
        {"VmLocation", "vm_location"},
        {"P2VError", "p2v_error"},
        {"Version2Info", "version2_info"},
        {"AgentID", "agent_id"},
        {"A", "a"},
    };
    for (const auto& [name, expected] : kCases) {
        EXPECT_EQ(SnakeCase(name), expected);
    }
}

TEST(Naming, WordsOfCpp) {
    for (const char* word : {"class", "and", "xor_eq", "alignas", "co_await", "int", "register"}) {
        EXPECT_EQ(Enumerator(word), std::string(word) + "_");
        EXPECT_EQ(ParameterName(word), std::string(word) + "_");
    }
    for (const char* word : {"Class", "final", "override", "import", "string", "m_class", ""}) {
        EXPECT_EQ(Enumerator(word), word);
    }
}

class NamingOfTypes : public testing::Test {
protected:
    const Model::Type& Find(const std::string& name) {
        const Model::Type* type = m_compiled->module->FindType(name);
        EXPECT_NE(type, nullptr) << name;
        return *type;
    }

    void SetUp() override { ASSERT_NE(m_compiled->module, nullptr) << ErrorText(*m_compiled); }

    std::unique_ptr<Compiled> m_compiled = CompileText(R"(
        namespace morvane.propertyInfo;
        version version1;
        /// D.
        data SetUser wire MorvaneSetUser since version1 {
            user : string;
            flag : boolean optional;
            part : SetUser optional;
            list : int[];
            state : VmType optional;
            class : anyType optional;
            /// D.
            enum VmType wire MorvaneVmType since version1 { ostrelVM }
        }
        /// D.
        managed Task wire MorvanePropertyInfoTask since version1 {
            property refCount : int;
            method task();
            method toString();
            method prepareTargetVm();
        }
        )");
};

TEST_F(NamingOfTypes, TypeNames) {
    const Model::Type& nested = Find("morvane.propertyInfo.SetUser.VmType");
    EXPECT_EQ(QualifiedClassName(nested), "Morvane::PropertyInfo::SetUser::VmType");
    EXPECT_EQ(CppNamespace(nested), "Morvane::PropertyInfo");
    EXPECT_EQ(DescriptorGlobal(nested), "gMorvanePropertyInfoSetUserVmTypeTypeInfo");
    EXPECT_EQ(HeaderPath(nested), "api/set_user.h");
    EXPECT_EQ(TagConstant(*nested.AsEnum(), "ostrelVM"), "VMTYPE_OSTRELVM");
    EXPECT_EQ(
        MethodObjectsGlobal(*Find("morvane.propertyInfo.Task").AsManaged()),
        "gMorvanePropertyInfoTaskMethodObjects");

    EXPECT_EQ(DescriptorGlobal(Find("boolean")), "gBoolTypeInfo");
    EXPECT_EQ(DescriptorGlobal(Find("anyType")), "gAnyTypeInfo");
    EXPECT_EQ(DescriptorGlobal(Find("orlin.DynamicData")), "gOrlinDynamicDataTypeInfo");
    EXPECT_EQ(QualifiedClassName(Find("orlin.MethodFault")), "Tavik::MethodFault");
}

TEST_F(NamingOfTypes, Accessors) {
    const Model::DataType& type = *Find("morvane.propertyInfo.SetUser").AsData();
    const std::vector<std::string> kExpected = {
        "GetUser PeekUser SetUser_ SwapUser ",
        "IsFlag PeekFlag SetFlag SwapFlag UnsetFlag ",
        "GetPart PeekPart SetPart SwapPart ",
        "GetList GetPtrList PeekList IsSetList SetList SwapList ",
        "GetState PeekState SetState SwapState UnsetState ",
        "GetClass PeekClass SetClass SwapClass ",
    };
    ASSERT_EQ(type.properties.size(), kExpected.size());
    for (std::size_t index = 0; index < kExpected.size(); ++index) {
        const Model::Property& property = type.properties[index];
        std::string names;
        for (const Accessor accessor : AccessorsOf(property, type)) {
            names += AccessorName(accessor, property.name, type) + " ";
        }
        EXPECT_EQ(names, kExpected[index]);
    }
    EXPECT_EQ(MemberName("class"), "m_class");
}

TEST_F(NamingOfTypes, Methods) {
    const Model::ManagedType& type = *Find("morvane.propertyInfo.Task").AsManaged();
    EXPECT_EQ(AccessorName(Accessor::Get, type.properties[0].name, type), "GetRefCount_");
    EXPECT_EQ(MethodFunction("task", type), "Task_");
    EXPECT_EQ(MethodFunction("toString", type), "ToString_");
    EXPECT_EQ(MethodFunction("prepareTargetVm", type), "PrepareTargetVm");
    EXPECT_EQ(MethodConstant("prepareTargetVm"), "METHOD_PREPARETARGETVM");
    EXPECT_EQ(type.methods[2].wireName, "MorvanePrepareTargetVm");
}

} // namespace
} // namespace Schemac::Test
