#include "types/api/agent/internal/fault/cancel.h"
#include "types/api/agent/internal/fault/incompatibility_fault.h"
#include "types/api/agent/internal/fault/ssl_certificate_error.h"
#include "types/api/core/ssl_certificate_data.h"
#include "types/api/fault/agent_deployment_fault.h"
#include "types/api/fault/description_too_long.h"
#include "types/api/fault/file_not_found.h"
#include "types/api/fault/job_has_active_task_fault.h"
#include "types/api/fault/memory_not_supported.h"
#include "types/api/fault/no_hotfix_prerequisite_fault.h"
#include "types/api/fault/property_info_fault.h"
#include "types/api/fault/ssl_verification_fault.h"
#include "types/api/info/property_info.h"
#include "types/api/task/task.h"
#include "zabro/api/not_found.h"

#include <gtest/gtest.h>

#include <exception>

/// Faults of the interface as programs throw and catch them, the thrower in one library and the handler in
/// another.
namespace {

using namespace Morvane::Fault;
using namespace Morvane::Agent::Internal::Fault;
using Pellum::MakeRef;

template <class Thrown, class Handled>
void ExpectCaught(const Thrown& thrown) {
    // Through a plain pointer to the exception pointer's copy, as between threads.
    std::exception_ptr pointer;
    try {
        throw thrown;
    } catch (...) {
        pointer = std::current_exception();
    }
    EXPECT_THROW(std::rethrow_exception(pointer), Handled);
}

TEST(Faults, AreCaughtAsAnyOfTheirBases) {
    const SSLCertificateError::Exception exception("it has expired");
    EXPECT_EQ(exception.GetFault()->GetWhy(), "it has expired");
    EXPECT_STREQ(
        exception.what(), "morvane.agent.internal.fault.SSLCertificateError: why = \"it has expired\"");
    ExpectCaught<SSLCertificateError::Exception, SSLCertificateError::Exception>(exception);
    ExpectCaught<SSLCertificateError::Exception, MorvaneFault::Exception>(exception);
    ExpectCaught<SSLCertificateError::Exception, Tavik::RuntimeFault::Exception>(exception);
    ExpectCaught<SSLCertificateError::Exception, Tavik::MethodFault::Exception>(exception);
    ExpectCaught<SSLCertificateError::Exception, Pellum::Exception>(exception);
    ExpectCaught<SSLCertificateError::Exception, std::exception>(exception);
    EXPECT_EQ(exception.GetFault()->GetRefCount(), 1);

    const auto fault = MakeRef<SSLCertificateError>();
    EXPECT_THROW(fault->Throw(), MorvaneFault::Exception);
    const auto notFound = MakeRef<Zabro::Fault::NotFound>();
    notFound->_GetContent().SetText("msg", "no such task");
    try {
        notFound->Throw();
    } catch (const Zabro::Fault::ZabroFault::Exception& caught) {
        EXPECT_STREQ(caught.what(), "zabro.fault.NotFound: msg = \"no such task\"");
        EXPECT_EQ(caught.GetFault(), notFound.Get());
    }
    EXPECT_EQ(notFound->GetRefCount(), 1);
}

TEST(Faults, AreMadeFromTheirOwnProperties) {
    const auto chain = MakeRef<Tavik::DataArray<Morvane::SSLCertificateData>>();
    {
        const SSLVerificationFault::Exception exception(
            "db-07", true, "AB:CD", "self-signed", 18LL, chain.Get(), "PEM");
        const SSLVerificationFault& fault = *exception.GetFault();
        EXPECT_EQ(fault.GetHostname(), "db-07");
        EXPECT_TRUE(fault.IsSelfSigned());
        EXPECT_EQ(fault.GetThumbprint(), "AB:CD");
        EXPECT_EQ(fault.GetErrorFlags(), 18);
        EXPECT_EQ(fault.GetPtrCertificateChain(), chain.Get());
        EXPECT_EQ(fault.GetCertificate(), "PEM");
        EXPECT_STREQ(exception.what(), "morvane.fault.SSLVerificationFault: msg = \"self-signed\"");
    }
    EXPECT_EQ(chain->GetRefCount(), 1);

    using Morvane::Agent::Internal::CompatibilityError;
    EXPECT_EQ(MemoryNotSupported::Exception(1LL << 40).GetFault()->GetMemoryMB(), 1LL << 40);
    EXPECT_EQ(
        IncompatibilityFault::Exception(CompatibilityError::IMPORT_INCOMPATIBLE).GetFault()->GetCode(),
        CompatibilityError::IMPORT_INCOMPATIBLE);
    EXPECT_EQ(AgentDeploymentFault::Exception("host", {}).GetFault()->PeekErrCode(), nullptr);
    EXPECT_EQ(*DescriptionTooLong::Exception("long").GetFault()->PeekDescription(), "long");
    const auto task = MakeRef<Tavik::MoRef>(&Morvane::gMorvaneTaskTaskTypeInfo, "task-7");
    EXPECT_EQ(JobHasActiveTaskFault::Exception(task.Get()).GetFault()->GetTask(), task.Get());
    const auto info = MakeRef<Tavik::DataArray<Morvane::Info::PropertyInfo>>();
    EXPECT_EQ(PropertyInfoFault::Exception(info.Get()).GetFault()->GetPtrInfo(), info.Get());
    EXPECT_EQ(Cancel::Exception().GetFault()->GetRefCount(), 1);
    // Inherited ones are set afterwards.
    NoHotfixPrerequisiteFault::Exception hotfix("KB1");
    hotfix.GetFault()->SetDescription("before SP1");
    EXPECT_EQ(hotfix.GetFault()->GetName(), "KB1");
    EXPECT_EQ(FileNotFound::Exception().GetFault()->GetFile(), "");
}

} // namespace
