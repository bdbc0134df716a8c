#include "tavik/managed/managed_object.h"

namespace Tavik {

ManagedObjectCommon::~ManagedObjectCommon() = default;
ManagedObject::~ManagedObject() = default;

} // namespace Tavik
