// Moved to the records layer below the families, which several families share:
// cmddata/records/frame.h.
#pragma once

#include "cmddata/records/frame.h"
