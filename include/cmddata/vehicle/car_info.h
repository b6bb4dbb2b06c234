// Moved to the records layer below the families, which several families share:
// cmddata/records/car_info.h.
#pragma once

#include "cmddata/records/car_info.h"
