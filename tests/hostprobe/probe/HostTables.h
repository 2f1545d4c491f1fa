// The functions that the host lends through its standard parameters: are they there, and do they do what they say?
#pragma once

#include "sdk/SdkSuites.h"

#include <string>

namespace hostprobe {

// At the first call of all: tables, memory functions and the basic suite, each tried out. Later: the same tables as
// then. False when the host cannot be called back, so that a call cannot be answered. Safe on any thread.
bool checkStdParms(const std::string& call, imStdParms* stdParms);

// The basic suite by its place in the host's tables; only after checkStdParms() was true.
SPBasicSuite* basicSuiteOf(imStdParms* stdParms);

// The host's interface version as the first call gave it.
csSDK_int32 hostVersion();

// Complains when one of the `count` pointers of a table is null.
bool checkFunctions(const std::string& table, const void* functions, std::size_t count);
bool hasFunctions(const void* functions, std::size_t count);

}  // namespace hostprobe
