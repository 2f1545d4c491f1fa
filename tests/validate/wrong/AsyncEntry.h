// A wrong entry for asynchronous importers, put before the right one.
#pragma once

#include "wrong/Fault.h"

namespace wrong {

using AsyncEntry = csSDK_int32 (*)(csSDK_int32 selector, void* parameter);

// The right entry, and the host, of the asynchronous importers that were made under the one fault of this plug-in.
inline AsyncEntry rightAsync = nullptr;
inline imStdParms* asyncHost = nullptr;

// The right plug-in, whose asynchronous importers get this entry.
template <AsyncEntry wrongEntry>
csSDK_int32 withAsyncEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imCreateAsyncImporter && result == imNoErr) {
        auto* record = static_cast<imAsyncImporterCreationRec*>(param1);
        asyncHost = stdParms;
        rightAsync = record->outAsyncEntry;
        record->outAsyncEntry = wrongEntry;
    }
    return result;
}

}  // namespace wrong
