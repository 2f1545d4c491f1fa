// Routes a selector to its handler.
#pragma once

#include "sdk/SdkImporter.h"

// Logs the call, runs the handler and logs its result; imUnsupported for what has no handler. What a handler throws
// passes through, without the result line.
csSDK_int32 DispatchSelector(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);
