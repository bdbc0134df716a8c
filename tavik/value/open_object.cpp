#include "tavik/value/open_object.h"

namespace Tavik {

template class OpenObject<DynamicData>;
template class OpenObject<MethodFault>;
template class OpenObject<RuntimeFault>;

} // namespace Tavik
