// Plug-ins that take it badly when the host refuses something.
#include "wrong/ChangedSuite.h"
#include "wrong/Fault.h"

#include <cstring>

namespace wrong {

namespace {

constexpr csSDK_int32 kSelectors = 67;

bool isFrame(csSDK_int32 selector) { return selector == imGetSourceVideo; }

// --- Wrong answers ----------------------------------------------------------------------------------------------

csSDK_int32 failsWithBadFile(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return isFrame(selector) && result == imOtherErr ? csSDK_int32{imBadFile} : result;
}

csSDK_int32 answersExceptionsOtherwise(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return result == kExceptionResult ? csSDK_int32{imOtherErr} : result;
}

csSDK_int32 neverRecovers(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static csSDK_int32 failures[kSelectors] = {};
    csSDK_int32& failure = failures[selector];
    if (failure != 0) {
        return failure;
    }
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (result == imOtherErr || result == imMemErr || result == kExceptionResult) {
        failure = result;
    }
    return result;
}

// --- Pictures that are none -------------------------------------------------------------------------------------

csSDK_int32 hidesFailedFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (!isFrame(selector) || result == imNoErr) {
        return result;
    }
    const auto& record = *static_cast<imSourceVideoRec*>(param2);
    SPBasicSuite* basic = stdParms->piSuites->utilFuncs->getSPBasicSuite();
    const void* suite = nullptr;
    if (basic->AcquireSuite(kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion, &suite) != kSPNoError) {
        return result;
    }
    const imFrameFormat format = record.inFrameFormats[0];
    const prRect bounds = {0, 0, format.inFrameWidth, format.inFrameHeight};
    static_cast<const PrSDKPPixCreatorSuite*>(suite)->CreatePPix(record.outFrame, PrPPixBufferAccess_WriteOnly,
                                                                 static_cast<PrPixelFormat>(format.inPixelFormat),
                                                                 &bounds);
    basic->ReleaseSuite(kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion);
    return imNoErr;
}

// --- Things kept ------------------------------------------------------------------------------------------------

csSDK_int32 keepsASuiteAfterAFailure(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (isFrame(selector) && result != imNoErr) {
        const void* suite = nullptr;
        stdParms->piSuites->utilFuncs->getSPBasicSuite()->AcquireSuite(kPrSDKTimeSuite, kPrSDKTimeSuiteVersion,
                                                                       &suite);
    }
    return result;
}

// --- Memory -----------------------------------------------------------------------------------------------------

char* newMemoryWithoutALook(csSDK_uint32 size) {
    char* memory = trueMemory()->newPtr(size);
    std::memset(memory, 0, size);
    return memory;
}

csSDK_int32 trustsNewMemory(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.newPtr = newMemoryWithoutALook}, selector, stdParms, param1, param2);
}

// --- Suites that nobody needs -----------------------------------------------------------------------------------

bool missesTheCache = false;
bool missesAny = false;

SPErr acquireAndRemember(const char* name, csSDK_int32 version, const void** suite) {
    const SPErr result = trueBasicSuite()->AcquireSuite(name, version, suite);
    missesAny = missesAny || result != kSPNoError;
    missesTheCache = missesTheCache || (result != kSPNoError && std::strcmp(name, kPrSDKPPixCacheSuite) == 0);
    return result;
}

csSDK_int32 needsTheCacheSuite(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result =
        rightWithHost({.acquireSuite = acquireAndRemember}, selector, stdParms, param1, param2);
    return selector == imGetInfo8 && missesTheCache ? csSDK_int32{imOtherErr} : result;
}

csSDK_int32 asksForSuitesOnce(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result =
        rightWithHost({.acquireSuite = acquireAndRemember}, selector, stdParms, param1, param2);
    return selector == imGetInfo8 && missesAny ? csSDK_int32{imOtherErr} : result;
}

SPErr acquireThisOrTheNext(const char* name, csSDK_int32 version, const void** suite) {
    const SPErr result = trueBasicSuite()->AcquireSuite(name, version, suite);
    return result == kSPNoError ? result : trueBasicSuite()->AcquireSuite(name, version + 1, suite);
}

csSDK_int32 takesAnotherVersion(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.acquireSuite = acquireThisOrTheNext}, selector, stdParms, param1, param2);
}

// --- Other hosts ------------------------------------------------------------------------------------------------

PrSDKPPixSuite trueFrames;

prSuiteError evenRowBytes(PPixHand frame, csSDK_int32* rowBytes) {
    const prSuiteError result = trueFrames.GetRowBytes(frame, rowBytes);
    *rowBytes -= *rowBytes % 16;
    return result;
}

SPErr acquireEvenRows(const char* name, csSDK_int32 version, const void** suite) {
    static PrSDKPPixSuite table;
    return acquireChanged<PrSDKPPixSuite>(name, version, suite, kPrSDKPPixSuite, table, [](PrSDKPPixSuite& frames) {
        trueFrames = frames;
        frames.GetRowBytes = evenRowBytes;
    });
}

csSDK_int32 takesRowsForEven(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.acquireSuite = acquireEvenRows}, selector, stdParms, param1, param2);
}

csSDK_int32 knowsOneInterface(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const bool isRefused = selector == imOpenFile8 && stdParms->imInterfaceVer > IMPORTMOD_VERSION_18;
    return isRefused ? csSDK_int32{imBadFile} : right(selector, stdParms, param1, param2);
}

// --- Ticks ------------------------------------------------------------------------------------------------------

prSuiteError usualTicks(PrTime* ticks) {
    *ticks = 254016000000;
    return 0;
}

SPErr acquireUsualTime(const char* name, csSDK_int32 version, const void** suite) {
    static PrSDKTimeSuite table;
    return acquireChanged<PrSDKTimeSuite>(name, version, suite, kPrSDKTimeSuite, table,
                                          [](PrSDKTimeSuite& time) { time.GetTicksPerSecond = usualTicks; });
}

csSDK_int32 assumesUsualTicks(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.acquireSuite = acquireUsualTime}, selector, stdParms, param1, param2);
}

csSDK_int32 dividesByTheTicks(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (isFrame(selector)) {
        SPBasicSuite* basic = stdParms->piSuites->utilFuncs->getSPBasicSuite();
        const void* suite = nullptr;
        volatile PrTime ticks = 0;
        PrTime asked = 0;
        if (basic->AcquireSuite(kPrSDKTimeSuite, kPrSDKTimeSuiteVersion, &suite) == kSPNoError) {
            static_cast<const PrSDKTimeSuite*>(suite)->GetTicksPerSecond(&asked);
            basic->ReleaseSuite(kPrSDKTimeSuite, kPrSDKTimeSuiteVersion);
        }
        ticks = asked;
        ticks = static_cast<imSourceVideoRec*>(param2)->inFrameTime / ticks;
    }
    return right(selector, stdParms, param1, param2);
}

constexpr Fault kRefusingHostFaults[] = {
    {"fails-with-bad-file", failsWithBadFile},
    {"answers-exceptions-otherwise", answersExceptionsOtherwise},
    {"never-recovers", neverRecovers},
    {"hides-failed-frames", hidesFailedFrames},
    {"keeps-a-suite-after-a-failure", keepsASuiteAfterAFailure},
    {"trusts-new-memory", trustsNewMemory},
    {"needs-the-cache-suite", needsTheCacheSuite},
    {"asks-for-suites-once", asksForSuitesOnce},
    {"takes-another-version", takesAnotherVersion},
    {"takes-rows-for-even", takesRowsForEven},
    {"knows-one-interface", knowsOneInterface},
    {"assumes-usual-ticks", assumesUsualTicks},
    {"divides-by-the-ticks", dividesByTheTicks},
};

}  // namespace

std::span<const Fault> refusingHostFaults() { return kRefusingHostFaults; }

}  // namespace wrong
