#include "tavik/library/start_up.h"

#include "shop_types/tables.h"

TAVIK_START_UP(ShopTypesTables, "shop");
