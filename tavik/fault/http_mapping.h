#pragma once

#include "pellum/http/response_code.h"

namespace Tavik {

class DataObjectType;

/// The HTTP status for faults of a type, a constant; 500 for null, and for a type that has neither itself nor
/// by a base an entry in the table.
const Pellum::Http::ResponseCode::Info& FindHttpMapping(const DataObjectType* type);

} // namespace Tavik
