// The importer's answers, one function for each selector. Parameters are as the entry gets them, and not null.
#pragma once

#include "sdk/SdkImporter.h"

namespace hostprobe {

csSDK_int32 onInit(void* record);
csSDK_int32 onShutdown();
csSDK_int32 onGetIndFormat(csSDK_int32 index, void* record);
csSDK_int32 onGetSubTypeNames(imStdParms* stdParms, csSDK_int32 fileType, void* out);

csSDK_int32 onOpenFile(imStdParms* stdParms, void* reference, void* record);
csSDK_int32 onQuietFile(void* reference, void* privateData);
csSDK_int32 onCloseFile(void* reference, void* privateData);
csSDK_int32 onGetInfo(void* access, void* record);
csSDK_int32 onGetIndPixelFormat(csSDK_int32 index, void* record);
csSDK_int32 onAnalysis(imFileRef reference, void* record);
csSDK_int32 onDataRateAnalysis(imFileRef reference, void* record);
csSDK_int32 onGetAudioChannelLayout(imFileRef reference, void* record);
csSDK_int32 onImportAudio(imFileRef reference, void* record);
csSDK_int32 onGetSourceVideo(imFileRef reference, void* record);
csSDK_int32 onCreateAsyncImporter(imStdParms* stdParms, void* record);

}  // namespace hostprobe
