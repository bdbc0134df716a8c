#include "pellum/system/scheduled_item.h"

namespace Pellum::System {

ScheduledItem::~ScheduledItem() = default;

} // namespace Pellum::System
