#include "wrong/AsyncEntry.h"
#include "wrong/StuckFault.h"

#include "codec/QuorvaneApi.h"

namespace wrong {

namespace {

void leakInstance() {
    std::uint32_t handle = 0;
    quorvane_library_init();
    quorvane_open(&handle);
}

csSDK_int32 keepsACodecInstance(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imCloseFile) {
        leakInstance();
    }
    return right(selector, stdParms, param1, param2);
}

template <csSDK_int32 leaking, csSDK_int32 answer>
csSDK_int32 leaksAfter(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == leaking && result == answer) {
        leakInstance();
    }
    return result;
}

csSDK_int32 startsOnlyWithACodec(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector != imInit) {
        return right(selector, stdParms, param1, param2);
    }
    std::uint32_t handle = 0;
    quorvane_library_init();
    quorvane_open(&handle);
    if (handle != 0) {
        quorvane_close(handle);
    }
    quorvane_library_close();
    return handle != 0 ? right(selector, stdParms, param1, param2) : csSDK_int32{imOtherErr};
}

// --- Asynchronous importers with a wrong entry ------------------------------------------------------------------

// Flushing waits for the decoder, and announcing must not.
csSDK_int32 waitingEntry(csSDK_int32 selector, void* parameter) {
    const csSDK_int32 result = rightAsync(selector, parameter);
    if (selector == aiInitiateAsyncRead) {
        rightAsync(aiFlush, static_cast<aiAsyncRequest*>(parameter)->inPrivateData);
    }
    return result;
}

csSDK_int32 neverFlushingEntry(csSDK_int32 selector, void* parameter) {
    return selector == aiFlush ? csSDK_int32{aiNoError} : rightAsync(selector, parameter);
}

constexpr Fault kCodecFaults[] = {
    {"keeps-a-codec-instance", keepsACodecInstance},
    {"leaks-codec-on-bad-frame", leaksAfter<imGetSourceVideo, imBadCompression>},
    {"leaks-codec-on-bad-description", leaksAfter<imGetInfo8, imBadFile>},
    {"says-other-error-for-bad-frame", saysOther<imGetSourceVideo, imBadCompression, imOtherErr>},
    {"says-other-error-for-bad-description", saysOther<imGetInfo8, imBadFile, imOtherErr>},
    {"gives-up-after-bad-frame", sticksTo<imGetSourceVideo, imBadCompression>},
    {"gives-up-after-bad-description", sticksTo<imGetInfo8, imBadFile>},
    {"calls-an-unknown-type-a-bad-file", saysOther<imGetInfo8, imOtherErr, imBadFile>},
    {"ahead-calls-an-unknown-type-a-bad-file", saysOther<imCreateAsyncImporter, imOtherErr, imBadFile>},
    {"delivers-frames-of-no-size", deliversInsteadOf<imOtherErr>},
    {"gives-up-after-other-size", sticksTo<imGetSourceVideo, imOtherErr>},
    {"waits-when-announcing", withAsyncEntry<waitingEntry>},
    {"never-flushes", withAsyncEntry<neverFlushingEntry>},
    {"starts-only-with-a-codec", startsOnlyWithACodec},
};

}  // namespace

std::span<const Fault> codecFaults() { return kCodecFaults; }

}  // namespace wrong
