// The one function that the plug-in exports.
#pragma once

#include "sdk/SdkImporter.h"

// Runs a selector of the host. What handlers throw is logged, reported to the host's user and answered with 99;
// exceptions that do not derive from std::exception pass through.
extern "C" csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);
