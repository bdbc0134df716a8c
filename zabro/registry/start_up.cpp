#include "tavik/library/start_up.h"

#include "zabro/tables.h"

TAVIK_START_UP(ZabroTables, "zabro");
