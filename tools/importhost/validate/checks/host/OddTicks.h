// Hosts that count time in other ticks than the editor does.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

void oddTicks(CheckRun& run);

}  // namespace importhost::validate
