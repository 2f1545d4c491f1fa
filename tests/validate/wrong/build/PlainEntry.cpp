// The entry of a plug-in that is wrong by its build alone.
#include "wrong/Export.h"

#include "sdk/SdkImporter.h"

extern "C" csSDK_int32 rightImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);

WRONG_EXPORT csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2);

csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightImportEntry(selector, stdParms, param1, param2);
}
