#include "tavik/library/start_up.h"

#include "client_types/tables.h"

TAVIK_START_UP(ClientTypesTables, "client");
