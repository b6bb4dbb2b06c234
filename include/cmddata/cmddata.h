// Everything cmddata offers, in one include.
#pragma once

#include "cmddata/command/catalogue.h"
#include "cmddata/command/classes.h"
#include "cmddata/command/header.h"
#include "cmddata/command/layouts.h"
#include "cmddata/command/message.h"
#include "cmddata/command/undescribed.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/core.h"
#include "cmddata/core/describe.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/result.h"
#include "cmddata/core/scalar.h"
#include "cmddata/core/shared_region.h"
#include "cmddata/diagcode/diag_code.h"
#include "cmddata/diagcode/freeze_frame.h"
#include "cmddata/monitor/act_test.h"
#include "cmddata/monitor/conversion.h"
#include "cmddata/monitor/custom.h"
#include "cmddata/monitor/datmon.h"
#include "cmddata/monitor/datmon_records.h"
<<<<<<< HEAD
#include "cmddata/monitor/function.h"
=======
#include "cmddata/monitor/multi_mon.h"
>>>>>>> fam-monitor2
#include "cmddata/platform/export.h"
#include "cmddata/platform/platform.h"
#include "cmddata/vehicle/car_info.h"
#include "cmddata/vehicle/vehicle_info.h"
