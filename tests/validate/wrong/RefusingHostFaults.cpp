// Plug-ins that handle it badly when the host refuses something.
#include "wrong/FrameTools.h"

#include <cstring>

namespace wrong {

namespace {

csSDK_int32 neverRecovers(const Call& call) {
    constexpr csSDK_int32 kSelectors = 67;
    static csSDK_int32 failures[kSelectors] = {};
    csSDK_int32& failure = failures[call.selector];
    if (failure != 0) {
        return failure;
    }
    const csSDK_int32 result = call.pass();
    if (result == imOtherErr || result == imMemErr || result == kExceptionResult) {
        failure = result;
    }
    return result;
}

bool missesTheCache = false;
bool missesAny = false;

SPErr acquireAndRemember(const char* name, csSDK_int32 version, const void** suite) {
    const SPErr result = trueBasicSuite().AcquireSuite(name, version, suite);
    missesAny = missesAny || result != kSPNoError;
    missesTheCache = missesTheCache || (result != kSPNoError && std::strcmp(name, kPrSDKPPixCacheSuite) == 0);
    return result;
}

// Refuses to describe after a suite was missing.
Answer needsSuites(const bool& isMissing) {
    return [&isMissing, pass = withHost({.acquireSuite = acquireAndRemember})](const Call& call) {
        const csSDK_int32 result = pass(call);
        return call.selector == imGetInfo8 && isMissing ? csSDK_int32{imOtherErr} : result;
    };
}

SPErr acquireThisOrTheNext(const char* name, csSDK_int32 version, const void** suite) {
    const SPErr result = trueBasicSuite().AcquireSuite(name, version, suite);
    return result == kSPNoError ? result : trueBasicSuite().AcquireSuite(name, version + 1, suite);
}

PrSDKPPixSuite trueFrames;

void makeRowsEven(PrSDKPPixSuite& frames) {
    trueFrames = frames;
    frames.GetRowBytes = [](PPixHand frame, csSDK_int32* rowBytes) {
        const prSuiteError result = trueFrames.GetRowBytes(frame, rowBytes);
        *rowBytes -= *rowBytes % 16;
        return result;
    };
}

void divideByTheTicks(const Call& call) {
    const HeldSuite<PrSDKTimeSuite> time(call.stdParms, kPrSDKTimeSuite, kPrSDKTimeSuiteVersion);
    PrTime asked = 0;
    if (time) {
        time->GetTicksPerSecond(&asked);
    }
    volatile PrTime ticks = asked;
    ticks = call.record<imSourceVideoRec>().inFrameTime / ticks;
}

const Fault kRefusingHostFaults[] = {
    // --- Wrong results ---
    {"fails-with-bad-file", saysOther(imGetSourceVideo, imOtherErr, imBadFile)},
    {"answers-exceptions-otherwise", [](const Call& call) {
         const csSDK_int32 result = call.pass();
         return result == kExceptionResult ? csSDK_int32{imOtherErr} : result;
     }},
    {"never-recovers", neverRecovers},
    {"hides-failed-frames", frames([](const FrameRequest& request) {
         return request.pass() == imNoErr ? csSDK_int32{imNoErr} : deliverNothing(request);
     })},
    {"keeps-a-suite-after-a-failure", after(imGetSourceVideo, [](const Call& call, csSDK_int32 result) {
         if (result != imNoErr) {
             leakSuite(call);
         }
     })},
    {"trusts-new-memory", withHost({.newPtr = [](csSDK_uint32 size) {
         return static_cast<char*>(std::memset(trueMemory().newPtr(size), 0, size));
     }})},

    // --- Suites that are not needed ---
    {"needs-the-cache-suite", needsSuites(missesTheCache)},
    {"asks-for-suites-once", needsSuites(missesAny)},
    {"takes-another-version", withHost({.acquireSuite = acquireThisOrTheNext})},

    // --- Other hosts ---
    {"takes-rows-for-even", withHost(changedSuite<PrSDKPPixSuite>(kPrSDKPPixSuite, makeRowsEven))},
    {"knows-one-interface", on(imOpenFile8, [](const Call& call) {
         return call.stdParms->imInterfaceVer > IMPORTMOD_VERSION_18 ? csSDK_int32{imBadFile} : call.pass();
     })},
    {"assumes-usual-ticks", withHost(changedSuite<PrSDKTimeSuite>(kPrSDKTimeSuite, [](PrSDKTimeSuite& time) {
         time.GetTicksPerSecond = [](PrTime* ticks) {
             *ticks = 254016000000;
             return prSuiteError{0};
         };
     }))},
    {"divides-by-the-ticks", before(imGetSourceVideo, divideByTheTicks)},
};

}  // namespace

std::span<const Fault> refusingHostFaults() { return kRefusingHostFaults; }

}  // namespace wrong
