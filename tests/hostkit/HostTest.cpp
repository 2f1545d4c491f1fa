#include "hostkit/host/Host.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

SPErr acquire(Host& host, const char* name, csSDK_int32 version, const void** suite) {
    return host.stdParms()->piSuites->utilFuncs->getSPBasicSuite()->AcquireSuite(name, version, suite);
}

TEST(Host, AllSevenSuitesAreGiven) {
    Host host;
    const SuiteId suites[] = {{kPrSDKPPixCreatorSuite, 1}, {kPrSDKPPixSuite, 1},  {kPrSDKPPixCacheSuite, 6},
                              {kPrSDKTimeSuite, 1},        {kPrSDKAudioSuite, 1}, {kPrSDKImageProcessingSuite, 2},
                              {kPrSDKErrorSuite, 3}};
    for (const SuiteId& id : suites) {
        const void* suite = nullptr;
        EXPECT_EQ(acquire(host, id.name.c_str(), id.version, &suite), 0) << id.name;
        EXPECT_NE(suite, nullptr) << id.name;
    }
    EXPECT_EQ(host.suitesHeld(), 7);
}

TEST(Host, AnotherVersionOfASuiteIsNotFound) {
    Host host;
    const void* suite = &host;
    EXPECT_EQ(acquire(host, kPrSDKTimeSuite, 2, &suite), 0x53214664);
    EXPECT_EQ(suite, nullptr);
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST(Host, ARefusedSuiteIsNotFound) {
    Host host(hostProfile("no-ppix-suite"));
    const void* suite = &host;
    EXPECT_EQ(acquire(host, kPrSDKPPixSuite, 1, &suite), 0x53214664);
    EXPECT_EQ(suite, nullptr);
}

TEST(Host, ARefusedVersionLeavesTheOtherSuitesAlone) {
    Host host(hostProfile("old-cache-suite"));
    const void* suite = nullptr;
    EXPECT_NE(acquire(host, kPrSDKPPixCacheSuite, 6, &suite), 0);
    EXPECT_EQ(acquire(host, kPrSDKPPixSuite, 1, &suite), 0);
}

TEST(Host, MayRefuseASuiteForAWhile) {
    Host host;
    const void* suite = nullptr;
    host.refuse({{kPrSDKTimeSuite, kEveryVersion}});
    EXPECT_NE(acquire(host, kPrSDKTimeSuite, 1, &suite), 0);
    EXPECT_EQ(acquire(host, kPrSDKPPixSuite, 1, &suite), 0) << "the others are given";
    host.refuse({});
    EXPECT_EQ(acquire(host, kPrSDKTimeSuite, 1, &suite), 0);
}

TEST(Host, RefusesWhatItsProfileRefusesWhateverElse) {
    Host host(hostProfile("no-ppix-suite"));
    const void* suite = nullptr;
    host.refuse({});
    EXPECT_NE(acquire(host, kPrSDKPPixSuite, 1, &suite), 0);
}

TEST(Host, ASuiteThatIsKeptIsAProblem) {
    Host host;
    const void* suite = nullptr;
    acquire(host, kPrSDKTimeSuite, 1, &suite);
    acquire(host, kPrSDKTimeSuite, 1, &suite);
    host.basicSuite()->ReleaseSuite(kPrSDKTimeSuite, 1);
    EXPECT_EQ(host.problems(),
              Sentences{"The suite 'Premiere Time Suite' version 1 was acquired 2 times and released 1 time."});
}

TEST(Host, ReleasingASuiteThatIsNotHeldIsAProblem) {
    Host host;
    EXPECT_NE(host.basicSuite()->ReleaseSuite(kPrSDKTimeSuite, 1), 0);
    EXPECT_EQ(host.problems(), Sentences{"The suite 'Premiere Time Suite' version 1 was released without being held."});
}

TEST(Host, OnlyOneHostIsPlayedAtATime) {
    Host host;
    EXPECT_THROW(Host second, std::logic_error);
    EXPECT_EQ(&Host::current(), &host);
}

TEST(Host, TheInterfaceVersionIsTheProfiles) {
    EXPECT_EQ(Host(hostProfile("editor-9")).stdParms()->imInterfaceVer, 17);
    EXPECT_EQ(Host().stdParms()->imInterfaceVer, 18);
    EXPECT_EQ(Host(hostProfile("editor-14")).stdParms()->imInterfaceVer, 23);
}

TEST(HostProfile, RecordsGrowWithTheInterface) {
    EXPECT_EQ(hostProfile("editor-11").recordSizes().fileInfo, 5373u);
    EXPECT_EQ(hostProfile("editor-11").recordSizes().sourceVideo, 96u);
    EXPECT_EQ(hostProfile("editor-11").recordSizes().asyncRequest, 108u);
    EXPECT_EQ(hostProfile("editor-14").recordSizes().fileInfo, 5376u);
    EXPECT_EQ(hostProfile("editor-14").recordSizes().sourceVideo, 112u);
    EXPECT_EQ(hostProfile("editor-14").recordSizes().asyncRequest, 124u);
}

TEST(HostProfile, AnUnknownNameIsAnsweredWithTheKnownOnes) {
    try {
        hostProfile("editor-1");
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(std::string(error.what()).substr(0, 65),
                  "There is no host profile 'editor-1'; known are editor-11, editor-");
    }
}

}  // namespace
