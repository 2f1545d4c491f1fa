#include "wrong/FrameTools.h"

#include "codec/QuorvaneApi.h"

namespace wrong {

namespace {

std::uint32_t openInstance() {
    std::uint32_t handle = 0;
    quorvane_library_init();
    quorvane_open(&handle);
    return handle;
}

Answer leaksAfter(csSDK_int32 selector, csSDK_int32 answer) {
    return after(selector, [=](const Call&, csSDK_int32 result) {
        if (result == answer) {
            openInstance();
        }
    });
}

csSDK_int32 startsOnlyWithACodec(const Call& call) {
    const std::uint32_t handle = openInstance();
    if (handle != 0) {
        quorvane_close(handle);
    }
    quorvane_library_close();
    return handle != 0 ? call.pass() : csSDK_int32{imOtherErr};
}

const Fault kCodecFaults[] = {
    {"keeps-a-codec-instance", before(imCloseFile, [](const Call&) { openInstance(); })},
    {"leaks-codec-on-bad-frame", leaksAfter(imGetSourceVideo, imBadCompression)},
    {"leaks-codec-on-bad-description", leaksAfter(imGetInfo8, imBadFile)},
    {"says-other-error-for-bad-frame", saysOther(imGetSourceVideo, imBadCompression, imOtherErr)},
    {"says-other-error-for-bad-description", saysOther(imGetInfo8, imBadFile, imOtherErr)},
    {"gives-up-after-bad-frame", sticksTo(imGetSourceVideo, imBadCompression)},
    {"gives-up-after-bad-description", sticksTo(imGetInfo8, imBadFile)},
    {"calls-an-unknown-type-a-bad-file", saysOther(imGetInfo8, imOtherErr, imBadFile)},
    {"ahead-calls-an-unknown-type-a-bad-file", saysOther(imCreateAsyncImporter, imOtherErr, imBadFile)},
    {"delivers-frames-of-no-size", deliversInsteadOf(imOtherErr)},
    {"gives-up-after-other-size", sticksTo(imGetSourceVideo, imOtherErr)},
    {"starts-only-with-a-codec", on(imInit, startsOnlyWithACodec)},
};

}  // namespace

std::span<const Fault> codecFaults() { return kCodecFaults; }

}  // namespace wrong
