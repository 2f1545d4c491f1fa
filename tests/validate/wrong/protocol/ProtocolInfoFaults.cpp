#include "wrong/Fault.h"

#include <utility>

namespace wrong {

namespace {

bool isDescription(csSDK_int32 result) {
    return result == imNoErr || result == imIterateStreams || result == imBadStreamIndex;
}

// Changes each description that the real plug-in returns.
Answer describes(void (*change)(imFileInfoRec8& info)) {
    return after(imGetInfo8, [=](const Call& call, csSDK_int32 result) {
        if (isDescription(result)) {
            change(call.record<imFileInfoRec8>());
        }
    });
}

// Describes `stream` instead of the requested one.
csSDK_int32 describeStream(csSDK_int32 stream, const Call& call) {
    auto& info = call.record<imFileInfoRec8>();
    const csSDK_int32 asked = info.streamIdx;
    info.streamIdx = stream;
    const csSDK_int32 result = call.pass();
    info.streamIdx = asked;
    return result;
}

// Describes the next stream, whichever is requested.
csSDK_int32 knowsStreamsInTurnOnly(const Call& call) {
    static csSDK_int32 next = 0;
    const csSDK_int32 asked = call.record<imFileInfoRec8>().streamIdx;
    next = asked == 0 ? 0 : next;
    return asked > 3 || asked < 0 ? call.pass() : describeStream(next++, call);
}

csSDK_int32 forgetsAfterTheText(const Call& call) {
    static bool isForgotten = false;
    isForgotten = call.selector == imAnalysis || (isForgotten && call.selector != imOpenFile8);
    const csSDK_int32 result = call.pass();
    if (call.selector == imGetInfo8 && isDescription(result)) {
        call.record<imFileInfoRec8>().vidInfo.imageWidth += isForgotten ? 1 : 0;
    }
    return result;
}

csSDK_int32 failsInSilence(const Call& call) {
    static bool isDescribed = false;
    const csSDK_int32 result = call.selector == imAnalysis && !isDescribed ? kExceptionResult : call.pass();
    isDescribed = call.selector != imOpenFile8 &&
                  (isDescribed || (call.selector == imGetInfo8 && isDescription(result)));
    return result;
}

csSDK_int32 fillsOnlyWhatIsEmpty(const Call& call) {
    auto& info = call.record<imFileInfoRec8>();
    const csSDK_uint32 before = info.vidInfo.pixelAspectDen;
    const csSDK_int32 result = call.pass();
    if (isDescription(result) && before != 0) {
        info.vidInfo.pixelAspectDen = before;
    }
    return result;
}

const Fault kInfoFaults[] = {
    {"tells-one-frame-more", describes([](imFileInfoRec8& info) { info.vidDuration += info.vidSampleSize; })},
    {"swaps-rate-and-scale", describes([](imFileInfoRec8& info) {
         const csSDK_int32 scale = info.vidScale;
         info.vidScale = info.vidSampleSize;
         info.vidSampleSize = scale;
     })},
    {"sees-alpha-everywhere", describes([](imFileInfoRec8& info) { info.vidInfo.depth = 32; })},
    {"counts-bytes-as-sample-frames", describes([](imFileInfoRec8& info) { info.audDuration *= 4; })},
    {"has-streams-for-ever", saysOther(imGetInfo8, imBadStreamIndex, imIterateStreams)},
    {"shows-pictures-in-every-stream", describes([](imFileInfoRec8& info) { info.hasVideo = 1; })},
    {"takes-negative-streams-for-the-first", on(imGetInfo8, [](const Call& call) {
         return call.record<imFileInfoRec8>().streamIdx < 0 ? describeStream(0, call) : call.pass();
     })},
    {"knows-streams-in-turn-only", on(imGetInfo8, knowsStreamsInTurnOnly)},
    {"forgets-after-the-text", forgetsAfterTheText},
    {"answers-undescribed-clips", saysOther(imGetIndPixelFormat, kExceptionResult, imNoErr)},
    {"fails-in-silence", failsInSilence},
    {"clears-what-is-the-hosts", describes([](imFileInfoRec8& info) { info.vidInfo.noDuration = 0; })},
    {"fills-only-what-is-empty", on(imGetInfo8, fillsOnlyWhatIsEmpty)},
};

}  // namespace

std::span<const Fault> infoFaults() { return kInfoFaults; }

}  // namespace wrong
