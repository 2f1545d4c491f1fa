#include "hostkit/host/Host.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

// A refused suite is not found, and its address is null.
bool hasSuite(Host& host, const std::string& name, csSDK_int32 version) {
    SPBasicSuite* basic = host.stdParms()->piSuites->utilFuncs->getSPBasicSuite();
    const void* suite = &host;
    const SPErr error = basic->AcquireSuite(name.c_str(), version, &suite);
    EXPECT_TRUE(error == 0 ? suite != nullptr && suite != &host : error == 0x53214664 && suite == nullptr) << name;
    return error == 0;
}

TEST(Host, AllSevenSuitesAreGiven) {
    Host host;
    const SuiteId suites[] = {{kPrSDKPPixCreatorSuite, 1}, {kPrSDKPPixSuite, 1},  {kPrSDKPPixCacheSuite, 6},
                              {kPrSDKTimeSuite, 1},        {kPrSDKAudioSuite, 1}, {kPrSDKImageProcessingSuite, 2},
                              {kPrSDKErrorSuite, 3}};
    for (const SuiteId& id : suites) {
        EXPECT_TRUE(hasSuite(host, id.name, id.version)) << id.name;
    }
    EXPECT_EQ(host.suitesHeld(), 7);
}

TEST(Host, AnotherVersionOfASuiteIsNotFound) {
    Host host;
    EXPECT_FALSE(hasSuite(host, kPrSDKTimeSuite, 2));
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST(Host, ARefusedSuiteIsNotFound) {
    Host host(hostProfile("no-ppix-suite"));
    EXPECT_FALSE(hasSuite(host, kPrSDKPPixSuite, 1));
}

TEST(Host, ARefusedVersionLeavesTheOtherSuitesAlone) {
    Host host(hostProfile("old-cache-suite"));
    EXPECT_FALSE(hasSuite(host, kPrSDKPPixCacheSuite, 6));
    EXPECT_TRUE(hasSuite(host, kPrSDKPPixSuite, 1));
}

TEST(Host, CanRefuseASuiteForAWhile) {
    Host host;
    host.refuse({{kPrSDKTimeSuite, kEveryVersion}});
    EXPECT_FALSE(hasSuite(host, kPrSDKTimeSuite, 1));
    EXPECT_TRUE(hasSuite(host, kPrSDKPPixSuite, 1)) << "the others are given";
    host.refuse({});
    EXPECT_TRUE(hasSuite(host, kPrSDKTimeSuite, 1));
}

TEST(Host, AlwaysRefusesWhatItsProfileRefuses) {
    Host host(hostProfile("no-ppix-suite"));
    host.refuse({});
    EXPECT_FALSE(hasSuite(host, kPrSDKPPixSuite, 1));
}

TEST(Host, ALeakedSuiteIsAProblem) {
    Host host;
    hasSuite(host, kPrSDKTimeSuite, 1);
    hasSuite(host, kPrSDKTimeSuite, 1);
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

TEST(HostProfile, AnUnknownNameListsTheKnownOnes) {
    try {
        hostProfile("editor-1");
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(std::string(error.what()).substr(0, 65),
                  "There is no host profile 'editor-1'; known are editor-11, editor-");
    }
}

}  // namespace
