#include "tavik/type/type_info_loader.h"
#include "types/registry/version_record.h"
#include "types/tables.h"

#include <string>

/// Everything that happens when the library is loaded, in this order, which is the order of definition below.
/// There is no other dynamic initialisation in the library.
namespace {

// 1. The names under which authentication and authorisation events carry their facts.
[[maybe_unused]] const std::string authnEventKey = "AUTHN_EVENT_KEY";
[[maybe_unused]] const std::string authnSubjectKey = "AUTHN_SUBJECT_KEY";
[[maybe_unused]] const std::string authnObjectKey = "AUTHN_OBJECT_KEY";
[[maybe_unused]] const std::string authnParamPrefix = "AUTHN_PARAM_PREFIX";
[[maybe_unused]] const std::string authzEventKey = "AUTHZ_EVENT_KEY";
[[maybe_unused]] const std::string authzSubjectKey = "AUTHZ_SUBJECT_KEY";
[[maybe_unused]] const std::string authzObjectKey = "AUTHZ_OBJECT_KEY";
[[maybe_unused]] const std::string authzParamPrefix = "AUTHZ_PARAM_PREFIX";

/// Runs a step of the sequence.
struct Step {
    explicit Step(void (*run)()) { run(); }
};

// 2. The descriptor fields that point into other libraries.
[[maybe_unused]] const Step importsStored(&TypesTables::StoreImportedReferences);

// 3. The records of the data types, whose roots have bases in other libraries.
[[maybe_unused]] const Step dataTypesComplete(&TypesTables::CompleteDataTypes);

} // namespace

// 4. Registration: from here on the runtime may call the loader function.
const Tavik::TypeInfoLoader TypesTables::kRegistration(&Morvane::versionRecord, &TypesTables::LoadTypes);
