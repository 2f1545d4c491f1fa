// Hosts that give suites wrongly, and those whose time, image or error suite gives wrong answers.
#include "WrongCase.h"

#include <string_view>

using enum hostprobe::Sentence;
using Host = PlayedHost;

namespace {

const HostTables& good() { return Host::current().good; }

template <class Spoil>
auto spoilt(Spoil spoil) {
    return [spoil](Host& host) {
        spoil(host.used);
        host.play();
    };
}

bool isTime(const char* name) { return std::string_view(name) == kPrSDKTimeSuite; }

using Acquire = decltype(SPBasicSuite::AcquireSuite);
Acquire playedAcquire = nullptr;
PrSDKTimeSuite secondTimeTable = {};
int timesAcquired = 0;
PrTime toldTicks = 0;

// The played host's AcquireSuite stays within reach of the one that takes its place.
auto acquiringBy(Acquire acquire) {
    return spoilt([acquire](HostTables& used) {
        playedAcquire = used.basic.AcquireSuite;
        timesAcquired = 0;
        secondTimeTable = used.time;
        used.basic.AcquireSuite = acquire;
    });
}

WrongCases wrongAcquiring() {
    return {
        {"SuiteThatNobodyMade", InventedSuite, "AcquireSuite gave no error for a suite that no host has.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             playedAcquire(name, version, suite);
             return kSPNoError;
         })},
        {"AddressWithAnError", AddressOfNoSuite, "AcquireSuite failed without writing null.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             const void* found = nullptr;
             const SPErr error = playedAcquire(name, version, &found);
             *suite = error == kSPNoError ? found : *suite;
             return error;
         })},
        {"SuiteRefused", SuiteRefused, "AcquireSuite did not give version 1 of the Premiere Time Suite.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             return playedAcquire(isTime(name) ? "Premiere Suite That Nobody Made" : name, version, suite);
         }),
         "version=18"},
        {"SuiteThatIsNullWithoutAnError", SuiteRefused,
         "AcquireSuite did not give version 1 of the Premiere Time Suite.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             const SPErr error = playedAcquire(name, version, suite);
             *suite = isTime(name) ? nullptr : *suite;
             return error;
         })},
        {"SuiteThatIsLacking", SuiteGiven,
         "AcquireSuite gave version 1 of the Premiere Time Suite, which this host lacks.",
         [](Host& host) { host.play(); }, "without=Premiere Time Suite"},
        {"VersionThatIsLacking", SuiteGiven,
         "AcquireSuite gave version 6 of the Premiere PPix Cache Suite, which this host lacks.",
         [](Host& host) { host.play(); }, "without=Premiere PPix Cache Suite:6"},
        {"SuiteAtTwoAddresses", SuiteMoved, "AcquireSuite gave the Premiere Time Suite at two addresses.",
         acquiringBy([](const char* name, csSDK_int32 version, const void** suite) {
             const SPErr error = playedAcquire(name, version, suite);
             if (error == kSPNoError && isTime(name) && ++timesAcquired == 2) {
                 *suite = &secondTimeTable;
             }
             return error;
         })},
        {"SuiteThatEndsEarly", SuiteGone, "The Premiere Time Suite did not outlive its first release of two.",
         spoilt([](HostTables& used) {
             used.basic.ReleaseSuite = [](const char* name, csSDK_int32 version) {
                 if (isTime(name)) {
                     Host::current().used.time = {};
                 }
                 return good().basic.ReleaseSuite(name, version);
             };
         })},
        {"ReleaseFails", CallFailed, "ReleaseSuite failed with 1.", spoilt([](HostTables& used) {
             used.basic.ReleaseSuite = [](const char* name, csSDK_int32 version) {
                 return good().basic.ReleaseSuite(name, version) + 1;
             };
         })},
    };
}

WrongCases wrongTime() {
    return {
        {"OtherTicks", TicksPerSecond, "GetTicksPerSecond gave 254016000000, not 1000.",
         [](Host& host) { host.play(); }, "ticks=1000"},
        {"NoTicks", TicksPerSecond, "GetTicksPerSecond gave 0, not a positive number.", spoilt([](HostTables& used) {
             used.time.GetTicksPerSecond = [](PrTime* ticks) {
                 *ticks = 0;
                 return prSuiteError{0};
             };
         })},
        {"TicksThatChange", TicksPerSecond, "GetTicksPerSecond gave 500, not 1000.", spoilt([](HostTables& used) {
             toldTicks = 1000;
             used.time.GetTicksPerVideoFrame = [](csSDK_int32 rate, PrTime* ticks) {
                 const prSuiteError error = good().time.GetTicksPerVideoFrame(rate, ticks);
                 *ticks /= 254016000;
                 return error;
             };
             used.time.GetTicksPerAudioSample = [](float rate, PrTime* ticks) {
                 *ticks = static_cast<PrTime>(1000.0f / rate);
                 return prSuiteError{0x00020000};
             };
             used.time.GetTicksPerSecond = [](PrTime* ticks) {
                 *ticks = toldTicks;
                 toldTicks = 500;
                 return prSuiteError{0};
             };
         })},
        {"GetTicksFails", CallFailed, "GetTicksPerSecond failed with -1.", spoilt([](HostTables& used) {
             used.time.GetTicksPerSecond = [](PrTime*) { return prSuiteError{-1}; };
         })},
        {"TicksOfAFrame", TicksPerFrame, "GetTicksPerVideoFrame gave 10160640001 for rate 3.",
         spoilt([](HostTables& used) {
             used.time.GetTicksPerVideoFrame = [](csSDK_int32 rate, PrTime* ticks) {
                 const prSuiteError error = good().time.GetTicksPerVideoFrame(rate, ticks);
                 *ticks += rate == 3 ? 1 : 0;
                 return error;
             };
         })},
        {"GetTicksPerVideoFrameFails", CallFailed, "GetTicksPerVideoFrame failed with -1.",
         spoilt([](HostTables& used) {
             used.time.GetTicksPerVideoFrame = [](csSDK_int32, PrTime*) { return prSuiteError{-1}; };
         })},
        {"TicksOfASample", TicksPerSample, "GetTicksPerAudioSample gave 5292001 with result 0 for 48000 Hz.",
         spoilt([](HostTables& used) {
             used.time.GetTicksPerAudioSample = [](float rate, PrTime* ticks) {
                 const prSuiteError error = good().time.GetTicksPerAudioSample(rate, ticks);
                 *ticks += rate == 48000.0f ? 1 : 0;
                 return error;
             };
         })},
        {"RoundedWithoutSayingSo", TicksPerSample, "GetTicksPerAudioSample gave 23092363636 with result 0 for 11 Hz.",
         spoilt([](HostTables& used) {
             used.time.GetTicksPerAudioSample = [](float rate, PrTime* ticks) {
                 good().time.GetTicksPerAudioSample(rate, ticks);
                 return prSuiteError{0};
             };
         })},
        {"GetTicksPerAudioSampleFails", CallFailed, "GetTicksPerAudioSample failed with -1.",
         spoilt([](HostTables& used) {
             used.time.GetTicksPerAudioSample = [](float, PrTime*) { return prSuiteError{-1}; };
         })},
    };
}

WrongCases wrongImages() {
    return {
        {"AnswerOfOneByte", NoBoolean, "FormatHasAlpha gave 1515870721, neither 0 nor 1 (bgra).",
         spoilt([](HostTables& used) {
             used.image.FormatHasAlpha = [](PrPixelFormat format, prBool* answer) {
                 if (format != PrPixelFormat_BGRA_4444_8u) {
                     return good().image.FormatHasAlpha(format, answer);
                 }
                 *reinterpret_cast<char*>(answer) = 1;
                 return prSuiteError{0};
             };
         })},
        {"AlphaWhereNoneIs", WrongBoolean, "FormatHasAlpha gave 1 (bgrx).", spoilt([](HostTables& used) {
             used.image.FormatHasAlpha = [](PrPixelFormat format, prBool* answer) {
                 const prSuiteError error = good().image.FormatHasAlpha(format, answer);
                 *answer = format == PrPixelFormat_BGRX_4444_8u ? kPrTrue : *answer;
                 return error;
             };
         })},
        {"TopRowFirst", WrongBoolean, "FormatIsOriginTopLeft gave 1 (bgra).", spoilt([](HostTables& used) {
             used.image.FormatIsOriginTopLeft = [](PrPixelFormat format, prBool* answer) {
                 *answer = format == PrPixelFormat_BGRA_4444_8u;
                 return prSuiteError{0};
             };
         })},
        {"Compressed", WrongBoolean, "FormatIsCompressed gave 1 (yuy2).", spoilt([](HostTables& used) {
             used.image.FormatIsCompressed = [](PrPixelFormat format, prBool* answer) {
                 *answer = format == PrPixelFormat_YUYV_422_8u_601;
                 return prSuiteError{0};
             };
         })},
        {"FormatHasAlphaFails", CallFailed, "FormatHasAlpha failed with -1.", spoilt([](HostTables& used) {
             used.image.FormatHasAlpha = [](PrPixelFormat, prBool*) { return prSuiteError{-1}; };
         })},
        {"ErrorEventFails", CallFailed, "SetEventStringUnicode failed with -1.", spoilt([](HostTables& used) {
             used.error.SetEventStringUnicode = [](csSDK_uint32, prUTF16Char*, prUTF16Char*) {
                 return prSuiteError{-1};
             };
         })},
    };
}

}  // namespace

WrongCases wrongSuites() {
    WrongCases cases = wrongAcquiring();
    for (WrongCases& more : std::vector<WrongCases>{wrongTime(), wrongImages()}) {
        cases.insert(cases.end(), more.begin(), more.end());
    }
    return cases;
}
