#include "tavik/library/start_up.h"

#include "sample_types/tables.h"

TAVIK_START_UP(SampleTypesTables, "sample");
