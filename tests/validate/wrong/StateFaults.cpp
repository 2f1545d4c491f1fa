#include "wrong/AsyncEntry.h"

namespace wrong {

namespace {

// Frames come from the clip that was opened last.
csSDK_int32 mixesUpClips(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static void* latest = nullptr;
    const csSDK_int32 result = [&] {
        if (selector == imGetSourceVideo && latest) {
            imSourceVideoRec record = *static_cast<imSourceVideoRec*>(param2);
            record.inPrivateData = latest;
            return right(selector, stdParms, param1, &record);
        }
        return right(selector, stdParms, param1, param2);
    }();
    if (selector == imGetInfo8 && result == imNoErr) {
        latest = static_cast<imFileInfoRec8*>(param2)->privatedata;
    }
    if (selector == imCloseFile && latest == param2) {
        latest = nullptr;
    }
    return result;
}

// A quiet clip that is opened again is described by another stream than before.
csSDK_int32 forgetsTheStream(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    auto* opened = static_cast<imFileOpenRec8*>(param2);
    const bool isQuiet = selector == imOpenFile8 && opened->privatedata != nullptr;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (isQuiet && result == imNoErr) {
        imFileInfoRec8 info{};
        info.privatedata = opened->privatedata;
        info.streamIdx = 1;
        right(imGetInfo8, stdParms, nullptr, &info);
    }
    return result;
}

// Sound that goes on begins at the start each time.
csSDK_int32 startsSoundAnew(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imImportAudio7) {
        auto record = *static_cast<imImportAudioRec7*>(param2);
        record.position = record.position < 0 ? 0 : record.position;
        return right(selector, stdParms, param1, &record);
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 firstFrameEntry(csSDK_int32 selector, void* parameter) {
    if (selector != aiGetFrame) {
        return rightAsync(selector, parameter);
    }
    imSourceVideoRec record = *static_cast<imSourceVideoRec*>(parameter);
    record.inFrameTime = 0;
    return rightAsync(selector, &record);
}

// What the first start set up is gone with the shutdown, and a later start does not bring it back.
csSDK_int32 worksOnce(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool isOver = false;
    isOver = isOver || selector == imShutdown;
    return isOver && selector == imOpenFile8 ? csSDK_int32{imBadFile} : right(selector, stdParms, param1, param2);
}

csSDK_int32 keepsASuiteAtTheSecondStart(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static int starts = 0;
    if (selector == imInit && ++starts == 2) {
        const void* suite = nullptr;
        stdParms->piSuites->utilFuncs->getSPBasicSuite()->AcquireSuite(kPrSDKTimeSuite, 1, &suite);
    }
    return right(selector, stdParms, param1, param2);
}

constexpr Fault kStateFaults[] = {
    {"mixes-up-clips", mixesUpClips},
    {"forgets-the-stream", forgetsTheStream},
    {"starts-sound-anew", startsSoundAnew},
    {"collects-the-first-frame", withAsyncEntry<firstFrameEntry>},
    {"works-once", worksOnce},
    {"keeps-a-suite-at-the-second-start", keepsASuiteAtTheSecondStart},
};

}  // namespace

std::span<const Fault> stateFaults() { return kStateFaults; }

}  // namespace wrong
