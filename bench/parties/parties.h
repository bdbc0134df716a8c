#pragma once

#include "bench/party.h"

namespace Bench {

/// Those of this folder; each is built where its package is.
Party GetOurs();
Party GetPlain();
Party GetNlohmann();
Party GetRapidJson();
Party GetSimdjson();

} // namespace Bench
