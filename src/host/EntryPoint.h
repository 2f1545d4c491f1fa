// The plug-in's only exported function.
#pragma once

#include "sdk/SdkImporter.h"

// Runs a selector of the host. A handler's std::exception is logged, reported to the host's user and returned as 99;
// any other exception passes through.
extern "C" csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);
