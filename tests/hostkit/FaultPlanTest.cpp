#include "HostSuites.h"

#include <stdexcept>

using namespace hostkit;

namespace {

class Faults : public testing::Test {
protected:
    PrTime ticks() {
        PrTime value = 0;
        result = time.GetTicksPerSecond(&value);
        return value;
    }

    Host host;
    const PrSDKTimeSuite& time = suiteOf<PrSDKTimeSuite>(host, kPrSDKTimeSuite);
    csSDK_int32 result = 0;
};

TEST_F(Faults, OnlyTheNextCallFails) {
    host.faults().fail(HostCall::GetTicksPerSecond, -77);
    EXPECT_EQ(ticks(), 0);
    EXPECT_EQ(result, -77);
    EXPECT_EQ(ticks(), 254016000000);
    EXPECT_EQ(result, 0);
}

TEST_F(Faults, AFailureMayWaitForTheNthCall) {
    host.faults().fail(HostCall::GetTicksPerSecond, -77, 3);
    ticks();
    ticks();
    EXPECT_EQ(result, 0);
    ticks();
    EXPECT_EQ(result, -77);
}

TEST_F(Faults, AFailureMayLast) {
    host.faults().fail(HostCall::GetTicksPerSecond, -77, 2, FaultPlan::kForEver);
    ticks();
    EXPECT_EQ(result, 0);
    for (int i = 0; i < 5; ++i) {
        ticks();
        EXPECT_EQ(result, -77);
    }
}

TEST_F(Faults, OtherFunctionsAreLeftAlone) {
    host.faults().fail(HostCall::GetTicksPerVideoFrame, -77);
    EXPECT_EQ(ticks(), 254016000000);
}

TEST_F(Faults, ACallMayThrow) {
    host.faults().throwFrom(HostCall::GetTicksPerSecond, "out of time");
    try {
        ticks();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "out of time");
    }
}

TEST_F(Faults, MemoryMayRunOut) {
    host.faults().fail(HostCall::NewPtr);
    EXPECT_EQ(host.stdParms()->piSuites->memFuncs->newPtr(16), nullptr);
}

TEST_F(Faults, ASuiteThatIsNotAcquiredIsNull) {
    host.faults().fail(HostCall::AcquireSuite, 5);
    const void* suite = &host;
    EXPECT_EQ(host.basicSuite()->AcquireSuite(kPrSDKTimeSuite, 1, &suite), 5);
    EXPECT_EQ(suite, nullptr);
    EXPECT_EQ(host.suitesHeld(), 1) << "the fixture's own";
}

TEST_F(Faults, AnObserverSeesEveryCall) {
    int calls = 0;
    host.faults().observe([&](HostCall call) { calls += call == HostCall::GetTicksPerSecond; });
    ticks();
    ticks();
    host.faults().observe(nullptr);
    ticks();
    EXPECT_EQ(calls, 2);
}

TEST_F(Faults, AnImpossibleFailureIsRefused) {
    EXPECT_THROW(host.faults().fail(HostCall::NewPtr, -1, 0), std::invalid_argument);
}

TEST_F(Faults, TheCallLogNamesFunctionsAndArguments) {
    host.calls().keepLines(true);
    const void* suite = nullptr;
    host.basicSuite()->AcquireSuite(kPrSDKTimeSuite, 1, &suite);
    host.stdParms()->piSuites->memFuncs->disposePtr(nullptr);
    EXPECT_EQ(host.calls().lines(), (std::vector<std::string>{"Basic.AcquireSuite('Premiere Time Suite', 1)",
                                                              "Memory.disposePtr()"}));
}

TEST_F(Faults, CallsAreCountedWithoutALog) {
    ticks();
    ticks();
    EXPECT_EQ(host.calls().count(HostCall::GetTicksPerSecond), 2);
    EXPECT_EQ(host.calls().lines(), std::vector<std::string>{});
}

TEST(HostCall, TheLastCallHasItsOwnName) {
    EXPECT_STREQ(callName(HostCall::SetEventString), "Error.SetEventStringUnicode");
    EXPECT_STREQ(callName(HostCall::CreatePPix), "PPixCreator.CreatePPix");
    EXPECT_STREQ(callName(HostCall::GetTicksPerSecond), "Time.GetTicksPerSecond");
}

}  // namespace
