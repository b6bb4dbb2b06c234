// Moved to the records layer below the families, which several families share:
// cmddata/records/datmon_records.h.
#pragma once

#include "cmddata/records/datmon_records.h"
