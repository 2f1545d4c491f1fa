// Hosts that return wrong suites, and those whose time or image suite returns wrong values.
#include "WrongCase.h"

#include <string_view>

using enum hostprobe::Sentence;

namespace {

bool isTime(const char* name) { return std::string_view(name) == kPrSDKTimeSuite; }

PrSDKTimeSuite secondTimeTable = {};
int timesAcquired = 0;
PrTime toldTicks = 0;

auto acquiringBy(decltype(SPBasicSuite::AcquireSuite) acquire) {
    return spoilt([acquire](Host& host) { host.used.basic.AcquireSuite = acquire; });
}

// The Time Suite's second table at its second acquisition.
void acquireElsewhere(Host& host) {
    timesAcquired = 0;
    secondTimeTable = host.used.time;
    host.used.basic.AcquireSuite = [](const char* name, csSDK_int32 version, const void** suite) {
        const SPErr error = good().basic.AcquireSuite(name, version, suite);
        if (error == kSPNoError && isTime(name) && ++timesAcquired == 2) {
            *suite = &secondTimeTable;
        }
        return error;
    };
}

// 1000 ticks a second at the first call, and 500 later.
void changeTicks(Host& host) {
    toldTicks = 1000;
    host.used.time.GetTicksPerVideoFrame = [](csSDK_int32 rate, PrTime* ticks) {
        const prSuiteError error = good().time.GetTicksPerVideoFrame(rate, ticks);
        *ticks /= 254016000;
        return error;
    };
    host.used.time.GetTicksPerAudioSample = [](float rate, PrTime* ticks) {
        *ticks = static_cast<PrTime>(1000.0f / rate);
        return prSuiteError{0x00020000};
    };
    host.used.time.GetTicksPerSecond = [](PrTime* ticks) {
        *ticks = std::exchange(toldTicks, 500);
        return prSuiteError{0};
    };
}

// Writes one byte of the answer's four.
void answerInOneByte(Host& host) {
    host.used.image.FormatHasAlpha = [](PrPixelFormat format, prBool* answer) {
        if (format != PrPixelFormat_BGRA_4444_8u) {
            return good().image.FormatHasAlpha(format, answer);
        }
        *reinterpret_cast<char*>(answer) = 1;
        return prSuiteError{0};
    };
}

}  // namespace

WrongCases wrongSuites() {
    return {
        // --- Acquiring ---
        {"SuiteThatNobodyMade", InventedSuite, "AcquireSuite returned no error for a suite that no host has.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             good().basic.AcquireSuite(name, version, suite);
             return kSPNoError;
         })},
        {"AddressWithAnError", AddressOfNoSuite, "AcquireSuite failed without writing null.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             const void* const before = *suite;
             const SPErr error = good().basic.AcquireSuite(name, version, suite);
             *suite = error == kSPNoError ? *suite : before;
             return error;
         })},
        {"SuiteRefused", SuiteRefused, "AcquireSuite did not give version 1 of the Premiere Time Suite.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             return good().basic.AcquireSuite(isTime(name) ? "Premiere Suite That Nobody Made" : name, version, suite);
         }),
         "version=18"},
        {"SuiteThatIsNullWithoutAnError", SuiteRefused,
         "AcquireSuite did not give version 1 of the Premiere Time Suite.",
         changed(&SPBasicSuite::AcquireSuite, [](const char* name, csSDK_int32, const void** suite) {
             *suite = isTime(name) ? nullptr : *suite;
         })},
        {"SuiteThatIsLacking", SuiteGiven,
         "AcquireSuite returned version 1 of the Premiere Time Suite, which this host lacks.", spoilt([](Host&) {}),
         "without=Premiere Time Suite"},
        {"VersionThatIsLacking", SuiteGiven,
         "AcquireSuite returned version 6 of the Premiere PPix Cache Suite, which this host lacks.",
         spoilt([](Host&) {}), "without=Premiere PPix Cache Suite:6"},
        {"SuiteAtTwoAddresses", SuiteMoved, "AcquireSuite returned the Premiere Time Suite at two addresses.",
         spoilt(acquireElsewhere)},
        {"SuiteThatEndsEarly", SuiteGone, "The Premiere Time Suite did not outlive its first release of two.",
         changed(&SPBasicSuite::ReleaseSuite, [](const char* name, csSDK_int32) {
             if (isTime(name)) {
                 Host::current().used.time = {};
             }
         })},

        // --- Time ---
        {"OtherTicks", TicksPerSecond, "GetTicksPerSecond returned 254016000000, not 1000.", spoilt([](Host&) {}),
         "ticks=1000"},
        {"NoTicks", TicksPerSecond, "GetTicksPerSecond returned 0, not a positive number.",
         changed(&PrSDKTimeSuite::GetTicksPerSecond, [](PrTime* ticks) { *ticks = 0; })},
        {"TicksThatChange", TicksPerSecond, "GetTicksPerSecond returned 500, not 1000.", spoilt(changeTicks)},
        {"TicksOfAFrame", TicksPerFrame, "GetTicksPerVideoFrame returned 10160640001 for rate 3.",
         changed(&PrSDKTimeSuite::GetTicksPerVideoFrame,
                 [](csSDK_int32 rate, PrTime* ticks) { *ticks += rate == 3 ? 1 : 0; })},
        {"TicksOfASample", TicksPerSample, "GetTicksPerAudioSample returned 5292001 with result 0 for 48000 Hz.",
         changed(&PrSDKTimeSuite::GetTicksPerAudioSample,
                 [](float rate, PrTime* ticks) { *ticks += rate == 48000.0f ? 1 : 0; })},
        {"RoundedWithoutSayingSo", TicksPerSample,
         "GetTicksPerAudioSample returned 23092363636 with result 0 for 11 Hz.",
         spoilt([](Host& host) {
             host.used.time.GetTicksPerAudioSample = [](float rate, PrTime* ticks) {
                 good().time.GetTicksPerAudioSample(rate, ticks);
                 return prSuiteError{0};
             };
         })},

        // --- Images ---
        {"AnswerOfOneByte", NoBoolean, "FormatHasAlpha returned 1515870721, neither 0 nor 1 (bgra).",
         spoilt(answerInOneByte)},
        {"AlphaWhereNoneIs", WrongBoolean, "FormatHasAlpha returned 1 (bgrx).",
         changed(&PrSDKImageProcessingSuite::FormatHasAlpha, [](PrPixelFormat format, prBool* answer) {
             *answer = format == PrPixelFormat_BGRX_4444_8u ? kPrTrue : *answer;
         })},
        {"TopRowFirst", WrongBoolean, "FormatIsOriginTopLeft returned 1 (bgra).",
         changed(&PrSDKImageProcessingSuite::FormatIsOriginTopLeft,
                 [](PrPixelFormat format, prBool* answer) { *answer = format == PrPixelFormat_BGRA_4444_8u; })},
        {"Compressed", WrongBoolean, "FormatIsCompressed returned 1 (yuy2).",
         changed(&PrSDKImageProcessingSuite::FormatIsCompressed,
                 [](PrPixelFormat format, prBool* answer) { *answer = format == PrPixelFormat_YUYV_422_8u_601; })},
    };
}
