// Hosts that lack suites, and hosts of other makes.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

void refusedSuites(CheckRun& run);      // each suite refused at every step, and granted for another try
void hostProfiles(CheckRun& run);       // every known host that has what is needed

}  // namespace importhost::validate
