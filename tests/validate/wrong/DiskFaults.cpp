#include "wrong/StuckFault.h"

namespace wrong {

namespace {

// A path that was opened once is not opened a second time.
csSDK_int32 opensAClipOnce(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool hasOpened = false;
    if (selector == imOpenFile8 && hasOpened) {
        return imBadFile;
    }
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    hasOpened = hasOpened || (selector == imGetSourceVideo && result == imNoErr);
    return result;
}

csSDK_int32 onlyPretendsToOpenAgain(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imOpenFile8 && static_cast<imFileOpenRec8*>(param2)->privatedata != nullptr) {
        return imNoErr;
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 refusesSoundAfterReadError(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool hasSeenError = false;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    hasSeenError = hasSeenError || (selector == imGetSourceVideo && result == imFileReadFailed);
    return selector == imImportAudio7 && hasSeenError ? csSDK_int32{imFileReadFailed} : result;
}

constexpr Fault kDiskFaults[] = {
    {"says-bad-file-for-unreadable-frame", saysOther<imGetSourceVideo, imFileReadFailed, imBadFile>},
    {"gives-up-after-unreadable-frame", sticksTo<imGetSourceVideo, imFileReadFailed>},
    {"delivers-unreadable-frames", deliversInsteadOf<imFileReadFailed>},
    {"refuses-sound-after-read-error", refusesSoundAfterReadError},
    {"gives-up-after-failed-open", sticksTo<imOpenFile8, imBadFile>},
    {"opens-a-clip-once", opensAClipOnce},
    {"only-pretends-to-open-again", onlyPretendsToOpenAgain},
    {"says-other-error-for-failed-open", saysOther<imOpenFile8, imBadFile, imOtherErr>},
};

}  // namespace

std::span<const Fault> diskFaults() { return kDiskFaults; }

}  // namespace wrong
