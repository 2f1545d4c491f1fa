// A host in trouble: a clip is played once for each call that the plug-in makes of the host, and that call fails or
// throws. The plug-in must answer as it should, give back all that it took, and work again when the host does.
#pragma once

#include "importhost/validate/checks/host/TroublePlan.h"

#include <chrono>

namespace importhost::validate {

// A user's file may take long to describe, and is described hundreds of times.
inline constexpr std::chrono::seconds kLongTimeLimit{300};

// With the first good clip that has pictures, and at higher levels with one that has several streams of sound too.
void playInTrouble(CheckRun& run, const TroublePlan& plan);

}  // namespace importhost::validate
