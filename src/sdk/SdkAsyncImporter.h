// The host's asynchronous importer protocol.
#pragma once

#include "sdk/SdkImporter.h"

enum aiSelector : csSDK_int32 {
    aiInitiateAsyncRead = 0,
    aiCancelAsyncRead = 1,
    aiFlush = 2,
    aiGetFrame = 3,
    aiClose = 4,
    aiContinueToWaitForAsyncIO = 5,
    aiSelectEfficientRenderTime = 6,
};

enum aiResult : csSDK_int32 {
    aiNoError = 0,
    aiUnsupported = 1,
    aiUnknownError = 2,
    aiFrameNotFound = 3,
};

#pragma pack(push, 1)

// The second member is a Windows `long`, so 32 bits everywhere.
struct aiAsyncRequest {
    void* inPrivateData;
    csSDK_int32 unused1;
    imSourceVideoRec inSourceRec;
};
SDK_ASSERT_SIZE(aiAsyncRequest, 108);
SDK_ASSERT_OFFSET(aiAsyncRequest, inSourceRec, 12);

struct aiSelectEfficientRenderTimeRec {
    void* inPrivateData;
    void* prefs;
    csSDK_int32 prefsSize;
    PrTime ioTime;
    imRenderContext inRenderContext;
};
SDK_ASSERT_SIZE(aiSelectEfficientRenderTimeRec, 48);
SDK_ASSERT_OFFSET(aiSelectEfficientRenderTimeRec, ioTime, 20);

#pragma pack(pop)
