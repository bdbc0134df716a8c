#include "tavik/library/start_up.h"

#include "desk_types/tables.h"

TAVIK_START_UP(DeskTypesTables, "desk");
