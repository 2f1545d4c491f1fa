// Checks the functions that the host lends through its standard parameters.
#pragma once

#include "sdk/SdkSuites.h"

#include <string>

namespace hostprobe {

// Tries out tables, memory functions and the basic suite at the first call of all; later calls must come with the same
// tables. Returns false if the host cannot be called back, so that a call cannot be answered. Safe on any thread.
bool checkStdParms(const std::string& call, imStdParms* stdParms);

// Returns the basic suite by its place in the host's tables, which checkStdParms() must have accepted.
SPBasicSuite* basicSuiteOf(imStdParms* stdParms);

// The interface version of the first call.
csSDK_int32 hostVersion();

// Returns whether none of the `count` pointers of a table is null; checkFunctions() complains otherwise.
bool checkFunctions(const std::string& table, const void* functions, std::size_t count);
bool hasFunctions(const void* functions, std::size_t count);

}  // namespace hostprobe
