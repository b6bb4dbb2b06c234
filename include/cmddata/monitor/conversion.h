// Moved to the records layer below the families, which several families share:
// cmddata/records/conversion.h.
#pragma once

#include "cmddata/records/conversion.h"
