#pragma once

#include "bench/party.h"

namespace Bench {

/// Messages that protobuf's compiler made of the same schema.
Party GetProtobuf();

} // namespace Bench
