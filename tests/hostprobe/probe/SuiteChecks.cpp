#include "probe/SuiteChecks.h"

#include "probe/Complaints.h"
#include "probe/Expectations.h"
#include "probe/HeldSuite.h"

#include <atomic>

namespace hostprobe {

namespace {

struct VideoRate {
    PrTime rate;
    PrTime scale;
};

// In the order of the host's enumeration, which starts at 1.
constexpr VideoRate kVideoRates[] = {{24000, 1001}, {24, 1}, {25, 1}, {30000, 1001}, {30, 1}, {50, 1}, {60000, 1001},
                                     {60, 1}};

constexpr PrTime kSampleRates[] = {11, 8000, 44100, 48000, 192000};
constexpr prSuiteError kRounded = 0x00020000;

// --- Acquiring ------------------------------------------------------------------------------------------------

template <class Suite>
void expectGivenOrNot(const HeldSuite<Suite>& suite, const char* name, csSDK_int32 version) {
    const std::string number = std::to_string(version);
    const bool isGiven = suite.error() == kSPNoError && suite.get();
    expect(suite.error() == kSPNoError || !suite.get(), Sentence::AddressOfNoSuite);
    if (expected().refuses(name, version)) {
        expect(!isGiven, Sentence::SuiteGiven, {name, number});
    } else if (expected().isToldOfSuites || suite.error() == kSPNoError) {
        expect(isGiven, Sentence::SuiteRefused, {name, number});
    }
}

template <class Suite>
HeldSuite<Suite> acquireChecked(SPBasicSuite* basic, const char* name, csSDK_int32 version) {
    HeldSuite<Suite> suite(basic, name, version);
    expectGivenOrNot(suite, name, version);
    if (!suite.get() || !checkFunctions(name, suite.get(), sizeof(Suite) / 8)) {
        return suite;
    }
    const void* again = nullptr;
    const bool isAcquired = basic->AcquireSuite(name, version, &again) == kSPNoError;
    if (expect(isAcquired && again == suite.get(), Sentence::SuiteMoved, {name})) {
        expectZero("ReleaseSuite", basic->ReleaseSuite(name, version));
        expect(suite.usable(), Sentence::SuiteGone, {name});
    }
    return suite;
}

// --- Time -----------------------------------------------------------------------------------------------------

// Off by less than one tick, whichever way the host rounds.
bool isRounded(PrTime value, PrTime divisor, PrTime exactTimesDivisor) {
    const PrTime difference = value * divisor - exactTimesDivisor;
    return difference > -divisor && difference < divisor;
}

void checkVideoRates(const PrSDKTimeSuite& time, PrTime ticks) {
    csSDK_int32 number = 0;
    for (const VideoRate& row : kVideoRates) {
        PrTime perFrame = 0;
        ++number;
        if (expectGood("GetTicksPerVideoFrame", time.GetTicksPerVideoFrame(number, &perFrame))) {
            expect(isRounded(perFrame, row.rate, ticks * row.scale), Sentence::TicksPerFrame,
                   {std::to_string(perFrame), std::to_string(number)});
        }
    }
}

void checkSampleRates(const PrSDKTimeSuite& time, PrTime ticks) {
    for (const PrTime rate : kSampleRates) {
        PrTime perSample = 0;
        const prSuiteError result = time.GetTicksPerAudioSample(static_cast<float>(rate), &perSample);
        const prSuiteError wanted = ticks % rate == 0 ? 0 : kRounded;
        if (expectGood("GetTicksPerAudioSample", result)) {
            expect(result == wanted && isRounded(perSample, rate, ticks), Sentence::TicksPerSample,
                   {std::to_string(perSample), std::to_string(result), std::to_string(rate)});
        }
    }
}

}  // namespace

PrTime askTicksPerSecond(const PrSDKTimeSuite& time) {
    static std::atomic<PrTime> known = 0;
    PrTime ticks = 0;
    if (!expectGood("GetTicksPerSecond", time.GetTicksPerSecond(&ticks))) {
        return 0;
    }
    PrTime wanted = expected().ticks.value_or(ticks);
    if (PrTime none = 0; !known.compare_exchange_strong(none, wanted)) {
        wanted = none;
    }
    const std::string rule = ticks == wanted ? "a positive number" : std::to_string(wanted);
    return expect(ticks == wanted && ticks > 0, Sentence::TicksPerSecond, {std::to_string(ticks), rule}) ? ticks : 0;
}

void checkTimeSuite(const PrSDKTimeSuite& time) {
    if (const PrTime ticks = askTicksPerSecond(time); ticks != 0) {
        checkVideoRates(time, ticks);
        checkSampleRates(time, ticks);
    }
}

void checkErrorSuite(const PrSDKErrorSuite3& error) {
    prUTF16Char title[] = u"Host probe";
    prUTF16Char text[] = u"The probe looks at its host.";
    expectGood("SetEventStringUnicode", error.SetEventStringUnicode(kEventTypeInformational, title, text));
}

void checkSuites(SPBasicSuite* basic) {
    const auto creator =
        acquireChecked<PrSDKPPixCreatorSuite>(basic, kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion);
    const auto frames = acquireChecked<PrSDKPPixSuite>(basic, kPrSDKPPixSuite, kPrSDKPPixSuiteVersion);
    const auto cache = acquireChecked<PrSDKPPixCacheSuite>(basic, kPrSDKPPixCacheSuite, kPrSDKPPixCacheSuiteVersion);
    const auto time = acquireChecked<PrSDKTimeSuite>(basic, kPrSDKTimeSuite, kPrSDKTimeSuiteVersion);
    const auto image = acquireChecked<PrSDKImageProcessingSuite>(basic, kPrSDKImageProcessingSuite,
                                                                 kPrSDKImageProcessingSuiteVersion);
    const auto audio = acquireChecked<PrSDKAudioSuite>(basic, kPrSDKAudioSuite, kPrSDKAudioSuiteVersion);
    const auto error = acquireChecked<PrSDKErrorSuite3>(basic, kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3);
    if (time.usable()) {
        checkTimeSuite(*time.get());
    }
    if (image.usable()) {
        checkImageSuite(*image.get());
    }
    if (audio.usable()) {
        checkAudioSuite(*audio.get());
    }
    if (error.usable()) {
        checkErrorSuite(*error.get());
    }
    if (creator.usable() && frames.usable()) {
        checkFrameSuites(*creator.get(), *frames.get(), image.usable());
    }
}

}  // namespace hostprobe
