// Exceptions pass only between modules whose compilers have one C++ ABI.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

// Ends the check where the plug-in has Microsoft's ABI, which this program never has: what one of the two throws passes
// through the other without its handlers and destructors being run, or ends the program.
void skipIfCompilersAreMixed(CheckRun& run);

}  // namespace importhost::validate
