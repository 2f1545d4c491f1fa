// Tries out the host's memory functions and its basic suite, and frees everything.
#pragma once

#include "sdk/SdkSuites.h"

namespace hostprobe {

// All functions of the tables must be there.
void checkMemory(const PlugMemoryFuncs& memory);
void checkBasicSuite(const SPBasicSuite& basic);

}  // namespace hostprobe
