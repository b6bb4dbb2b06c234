// Everything cmddata offers, in one include.
#pragma once

#include "cmddata/core/buffer.h"
#include "cmddata/core/core.h"
#include "cmddata/core/describe.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/result.h"
#include "cmddata/core/scalar.h"
#include "cmddata/core/shared_region.h"
#include "cmddata/command/catalogue.h"
#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/platform/export.h"
#include "cmddata/platform/platform.h"
#include "cmddata/vehicle/car_info.h"
#include "cmddata/vehicle/vehicle_info.h"
