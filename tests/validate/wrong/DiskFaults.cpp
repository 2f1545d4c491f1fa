#include "wrong/FrameTools.h"

namespace wrong {

namespace {

// A clip that delivered a frame is not opened a second time.
csSDK_int32 opensAClipOnce(const Call& call) {
    static bool hasOpened = false;
    if (call.selector == imOpenFile8 && hasOpened) {
        return imBadFile;
    }
    const csSDK_int32 result = call.pass();
    hasOpened = hasOpened || (call.selector == imGetSourceVideo && result == imNoErr);
    return result;
}

csSDK_int32 refusesSoundAfterReadError(const Call& call) {
    static bool hasSeenError = false;
    const csSDK_int32 result = call.pass();
    hasSeenError = hasSeenError || (call.selector == imGetSourceVideo && result == imFileReadFailed);
    return call.selector == imImportAudio7 && hasSeenError ? csSDK_int32{imFileReadFailed} : result;
}

const Fault kDiskFaults[] = {
    {"says-bad-file-for-unreadable-frame", saysOther(imGetSourceVideo, imFileReadFailed, imBadFile)},
    {"gives-up-after-unreadable-frame", sticksTo(imGetSourceVideo, imFileReadFailed)},
    {"delivers-unreadable-frames", deliversInsteadOf(imFileReadFailed)},
    {"refuses-sound-after-read-error", refusesSoundAfterReadError},
    {"gives-up-after-failed-open", sticksTo(imOpenFile8, imBadFile)},
    {"opens-a-clip-once", opensAClipOnce},
    {"only-pretends-to-open-again", on(imOpenFile8, [](const Call& call) {
         return call.record<imFileOpenRec8>().privatedata ? csSDK_int32{imNoErr} : call.pass();
     })},
    {"says-other-error-for-failed-open", saysOther(imOpenFile8, imBadFile, imOtherErr)},
};

}  // namespace

std::span<const Fault> diskFaults() { return kDiskFaults; }

}  // namespace wrong
