// Calls the handler of a selector.
#pragma once

#include "sdk/SdkImporter.h"

// Logs the call, runs the handler and logs its result; returns imUnsupported if there is no handler. Exceptions pass
// through, without a result line.
csSDK_int32 DispatchSelector(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);
