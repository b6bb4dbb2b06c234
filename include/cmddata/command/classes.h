// The class table moved to the layer above the families: cmddata/table/classes.h.
#pragma once

#include "cmddata/table/classes.h"
