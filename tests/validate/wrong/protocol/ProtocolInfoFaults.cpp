#include "wrong/protocol/ProtocolFaults.h"

namespace wrong {

namespace {

imFileInfoRec8& infoIn(void* param2) { return *static_cast<imFileInfoRec8*>(param2); }

bool isDescription(csSDK_int32 selector, csSDK_int32 result) {
    return selector == imGetInfo8 && (result == imNoErr || result == imIterateStreams || result == imBadStreamIndex);
}

// The right answer, with the description changed.
template <class Change>
csSDK_int32 describedWith(Change change, csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (isDescription(selector, result)) {
        change(infoIn(param2));
    }
    return result;
}

// The right answer for another stream than the one that was asked for.
csSDK_int32 describedAs(csSDK_int32 stream, csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 asked = infoIn(param2).streamIdx;
    infoIn(param2).streamIdx = stream;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    infoIn(param2).streamIdx = asked;
    return result;
}

csSDK_int32 tellsOneFrameMore(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return describedWith([](imFileInfoRec8& info) { info.vidDuration += info.vidSampleSize; }, selector, stdParms,
                         param1, param2);
}

csSDK_int32 swapsRateAndScale(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return describedWith([](imFileInfoRec8& info) {
        const csSDK_int32 scale = info.vidScale;
        info.vidScale = info.vidSampleSize;
        info.vidSampleSize = scale;
    }, selector, stdParms, param1, param2);
}

csSDK_int32 seesAlphaEverywhere(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return describedWith([](imFileInfoRec8& info) { info.vidInfo.depth = 32; }, selector, stdParms, param1, param2);
}

csSDK_int32 countsBytesAsSampleFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return describedWith([](imFileInfoRec8& info) { info.audDuration *= 4; }, selector, stdParms, param1, param2);
}

csSDK_int32 hasStreamsForEver(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return selector == imGetInfo8 && result == imBadStreamIndex ? csSDK_int32{imIterateStreams} : result;
}

csSDK_int32 showsPicturesInEveryStream(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return describedWith([](imFileInfoRec8& info) { info.hasVideo = 1; }, selector, stdParms, param1, param2);
}

csSDK_int32 takesNegativeStreamsForTheFirst(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return selector == imGetInfo8 && infoIn(param2).streamIdx < 0
               ? describedAs(0, selector, stdParms, param1, param2)
               : right(selector, stdParms, param1, param2);
}

// As one that walks on from stream to stream, whatever it is asked for.
csSDK_int32 knowsStreamsInTurnOnly(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static csSDK_int32 next = 0;
    if (selector != imGetInfo8) {
        return right(selector, stdParms, param1, param2);
    }
    const csSDK_int32 asked = infoIn(param2).streamIdx;
    next = asked == 0 ? 0 : next;
    return asked > 3 || asked < 0 ? right(selector, stdParms, param1, param2)
                                  : describedAs(next++, selector, stdParms, param1, param2);
}

csSDK_int32 forgetsAfterTheText(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool isForgotten = false;
    isForgotten = selector == imAnalysis || (isForgotten && selector != imOpenFile8);
    return describedWith([](imFileInfoRec8& info) { info.vidInfo.imageWidth += isForgotten ? 1 : 0; }, selector,
                         stdParms, param1, param2);
}

csSDK_int32 answersUndescribedClips(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return selector == imGetIndPixelFormat && result == kExceptionResult ? csSDK_int32{imNoErr} : result;
}

csSDK_int32 failsInSilence(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool isDescribed = false;
    const csSDK_int32 result = selector == imAnalysis && !isDescribed ? kExceptionResult
                                                                      : right(selector, stdParms, param1, param2);
    isDescribed = selector != imOpenFile8 && (isDescribed || isDescription(selector, result));
    return result;
}

csSDK_int32 clearsWhatIsTheHosts(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return describedWith([](imFileInfoRec8& info) { info.vidInfo.noDuration = 0; }, selector, stdParms, param1, param2);
}

csSDK_int32 fillsOnlyWhatIsEmpty(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_uint32 before = selector == imGetInfo8 ? infoIn(param2).vidInfo.pixelAspectDen : 0;
    return describedWith([=](imFileInfoRec8& info) {
        info.vidInfo.pixelAspectDen = before != 0 ? before : csSDK_uint32{info.vidInfo.pixelAspectDen};
    }, selector, stdParms, param1, param2);
}

constexpr Fault kInfoFaults[] = {
    {"tells-one-frame-more", tellsOneFrameMore},
    {"swaps-rate-and-scale", swapsRateAndScale},
    {"sees-alpha-everywhere", seesAlphaEverywhere},
    {"counts-bytes-as-sample-frames", countsBytesAsSampleFrames},
    {"has-streams-for-ever", hasStreamsForEver},
    {"shows-pictures-in-every-stream", showsPicturesInEveryStream},
    {"takes-negative-streams-for-the-first", takesNegativeStreamsForTheFirst},
    {"knows-streams-in-turn-only", knowsStreamsInTurnOnly},
    {"forgets-after-the-text", forgetsAfterTheText},
    {"answers-undescribed-clips", answersUndescribedClips},
    {"fails-in-silence", failsInSilence},
    {"clears-what-is-the-hosts", clearsWhatIsTheHosts},
    {"fills-only-what-is-empty", fillsOnlyWhatIsEmpty},
};

}  // namespace

std::span<const Fault> infoFaults() { return kInfoFaults; }

}  // namespace wrong
