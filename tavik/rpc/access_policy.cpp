#include "tavik/rpc/access_policy.h"

namespace Tavik {

AccessPolicy::~AccessPolicy() = default;
AllowAll::~AllowAll() = default;

void AllowAll::Check(const ServerCall& /*call*/) {}

} // namespace Tavik
