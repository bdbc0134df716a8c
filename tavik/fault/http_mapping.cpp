#include "tavik/fault/http_mapping.h"

#include "tavik/type/data_object_type.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Tavik {

namespace {

using namespace Pellum::Http::ResponseCode;

struct Mapping {
    std::string_view wireName;
    const Info& status;
};

/// What derives from a fault has its status, unless it stands here itself. A fault that says what is wrong
/// with a machine that was named in a request is no fault of the caller's rights here: wrong credentials for
/// a source are a bad request.
constexpr Mapping kMappings[] = {
    // What was asked for is wrong in itself.
    {"InvalidArgument", kBadRequest},
    {"InvalidLocale", kBadRequest},
    {"InvalidName", kBadRequest},
    {"InvalidRequest", kBadRequest},
    {"MorvaneBadShareNameFault", kBadRequest},
    {"MorvaneDescriptionTooLong", kBadRequest},
    {"MorvaneHelperVmStaticIpInvalidFault", kBadRequest},
    {"MorvaneHyperVInvalidInput", kBadRequest},
    {"MorvaneImportSourceInvalidConfigInfo", kBadRequest},
    {"MorvaneImportSourceV2iPassword", kBadRequest},
    {"MorvaneImportSourceWrongPassword", kBadRequest},
    {"MorvaneIncorrectCredentialsFault", kBadRequest},
    {"MorvaneInvalidTargetProductVersion", kBadRequest},
    {"MorvaneInvalidWorkgroupComputerNameFault", kBadRequest},
    {"MorvaneMissingConfigInfo", kBadRequest},
    {"MorvaneParamValidationError", kBadRequest},
    {"MorvaneSysinfoQueryAuthenticationFault", kBadRequest},
    {"MorvaneSysinfoQueryInvalidHostNameFault", kBadRequest},
    {"MorvaneSysinfoQueryInvalidIpFault", kBadRequest},

    // Who asks is not known.
    {"InvalidLogin", kUnauthorized},
    {"NoClientCertificate", kUnauthorized},
    {"SSPIChallenge", kUnauthorized},

    // Who asks may not.
    {"MorvaneDeviceAccessDenied", kForbidden},
    {"MorvaneHostAccessRestrictedFault", kForbidden},
    {"MorvaneImportSourceNoPermission", kForbidden},
    {"MorvaneNoPermissionForConnection", kForbidden},
    {"MorvaneNoWritePermissionOnFolder", kForbidden},
    {"MorvaneSysinfoQueryNotRootFault", kForbidden},
    {"NoPermission", kForbidden},

    // What was named does not exist.
    {"ManagedObjectNotFound", kNotFound},
    {"MorvaneFileNotFound", kNotFound},
    {"MorvaneFolderNotFound", kNotFound},
    {"MorvaneImportDestinationNoDatastoreFault", kNotFound},
    {"MorvaneImportDestinationNoHostFault", kNotFound},
    {"MorvaneImportDestinationNoInventoryFolderFault", kNotFound},
    {"MorvaneImportDestinationNoResourcePoolFault", kNotFound},
    {"MorvaneImportSourceNotFound", kNotFound},
    {"MorvaneSnapshotNotFound", kNotFound},
    {"MorvaneSysinfoQueryStorageNotFoundFault", kNotFound},
    {"NotFound", kNotFound},

    // It is in the wrong state, or something is in the way.
    {"DuplicateName", kConflict},
    {"InvalidState", kConflict},
    {"MorvaneAgentInstallAlreadyExistsFault", kConflict},
    {"MorvaneAgentInstallRebootPendingFault", kConflict},
    {"MorvaneCredentialsConflictFault", kConflict},
    {"MorvaneDatastoreReadOnlyFault", kConflict},
    {"MorvaneDiskLockFault", kConflict},
    {"MorvaneHelperVmStaticIpInUseFault", kConflict},
    {"MorvaneImportDestinationHostMaintenanceModeFault", kConflict},
    {"MorvaneImportDestinationVMAlreadyExists", kConflict},
    {"MorvaneImportSourcePoweredOnFault", kConflict},
    {"MorvaneImportSourceSuspendedFault", kConflict},
    {"MorvaneJobFault", kConflict},

    // It is well-formed, and nothing that can be done with that machine.
    {"MorvaneAgentInstallOldWinVersionFault", kUnprocessableContent},
    {"MorvaneCloneSynchronizationNotSupported", kUnprocessableContent},
    {"MorvaneDatastoreNotSupportsQVDKSectorSizeFault", kUnprocessableContent},
    {"MorvaneEfiFirmwareFoundFault", kUnprocessableContent},
    {"MorvaneGptDiskFoundFault", kUnprocessableContent},
    {"MorvaneHyperVNotSupportedFault", kUnprocessableContent},
    {"MorvaneImportDestination64BitSupportFault", kUnprocessableContent},
    {"MorvaneImportDestinationEfiSupportFault", kUnprocessableContent},
    {"MorvaneImportSourceNotRecognized", kUnprocessableContent},
    {"MorvaneImportSourceQBKNoCatalog", kUnprocessableContent},
    {"MorvaneIncompatibilityFault", kUnprocessableContent},
    {"MorvaneInsufficientMassStorageBusAttachPoints", kUnprocessableContent},
    {"MorvaneInvalidVhdFile", kUnprocessableContent},
    {"MorvaneMalformedDiskFault", kUnprocessableContent},
    {"MorvaneMemoryNotSupported", kUnprocessableContent},
    {"MorvaneNetworkShareNotSupported", kUnprocessableContent},
    {"MorvaneNotSupportedAgent", kUnprocessableContent},
    {"MorvaneNotSupportedConnection", kUnprocessableContent},
    {"MorvaneNotSupportedVolume", kUnprocessableContent},
    {"MorvaneNumCPUNotSupported", kUnprocessableContent},
    {"MorvaneNumCoresNotSupported", kUnprocessableContent},
    {"MorvaneNumSocketsNotSupported", kUnprocessableContent},
    {"MorvaneReconfigurationUnsupportedOsFault", kUnprocessableContent},
    {"MorvaneSysinfoQueryUnrecognizedBootLoaderFault", kUnprocessableContent},
    {"MorvaneSysprepUnSupportedGuestFault", kUnprocessableContent},
    {"MorvaneThinProvisioningNotSupported", kUnprocessableContent},
    {"MorvaneTooManyDisks", kUnprocessableContent},
    {"MorvaneUnsupportedDiskSizeForHWv", kUnprocessableContent},
    {"MorvaneUnsupportedDiskTypeForHosted", kUnprocessableContent},
    {"MorvaneUnsupportedSectorSizeFault", kUnprocessableContent},
    {"MorvaneVSSSnapshotVolumeNotSupported", kUnprocessableContent},

    // Another machine can not be reached, or is not trusted.
    {"HostConnectFault", kBadGateway},
    {"MorvaneBriskConnectionFault", kBadGateway},
    {"MorvaneConnectionFault", kBadGateway},
    {"MorvaneFerruleConnectionFault", kBadGateway},
    {"MorvaneHelperVmConnectionToSourceFault", kBadGateway},
    {"MorvaneImportDestinationHostDisconnectedFault", kBadGateway},
    {"MorvaneSSLCertificateError", kBadGateway},
    {"MorvaneSSLConnectionFault", kBadGateway},
    {"MorvaneSSLVerificationFault", kBadGateway},
    {"MorvaneSysinfoQueryBadThumbprintFault", kBadGateway},
    {"MorvaneSysinfoQueryConnRefusedFault", kBadGateway},
    {"MorvaneSysinfoQueryNetworkUnreachFault", kBadGateway},
    {"MorvaneSysinfoQueryConnTimedOutFault", kGatewayTimeout},

    // Something that is needed is not there now.
    {"MorvaneDatastoreNotAccessibleFault", kServiceUnavailable},
    {"MorvaneKlav2NotRunning", kServiceUnavailable},
    {"MorvaneNoLocalAgent", kServiceUnavailable},
    {"MorvaneNoRemoteAgent", kServiceUnavailable},
    {"MorvaneInsufficientDiskSpace", kInsufficientStorage},
    {"MorvaneVSSSnapshotInsufficientStorage", kInsufficientStorage},
};

} // namespace

const Info& FindHttpMapping(const DataObjectType* type) {
    for (; type != nullptr; type = type->GetBaseType()) {
        const auto* const found =
            std::find_if(std::begin(kMappings), std::end(kMappings), [&](const Mapping& mapping) {
                return mapping.wireName == type->GetWireName();
            });
        if (found != std::end(kMappings)) {
            return found->status;
        }
    }
    return kInternalServerError;
}

} // namespace Tavik
