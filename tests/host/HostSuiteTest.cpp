// The holder of one suite and the set of six, tested without the plug-in.
#include "HostFixture.h"

#include "host/HostSuite.h"
#include "host/ImporterSuites.h"
#include "log/Log.h"

using hostkit::HostCall;

namespace {

constexpr char kTime[] = "Premiere Time Suite";

using TimeSuite = HostSuite<PrSDKTimeSuite>;

class HostSuiteHolders : public testing::Test {
protected:
    HostSuiteHolders() {
        ConfigureLog("quorvane_pr_importer", true, false);
        m_host.calls().keepLines(true);
    }
    ~HostSuiteHolders() override {
        CloseLog();
        ConfigureLog("quorvane_pr_importer", false, false);
    }

    Lines logged() const {
        Lines lines;
        for (const std::string& line : suiteLines(m_log.messages())) {
            lines.push_back(withoutPointers(line));
        }
        return lines;
    }

    ProfileSandbox m_sandbox;
    hostkit::PluginLog m_log;
    hostkit::Host m_host;
};

TEST_F(HostSuiteHolders, ConstructionAcquiresAtOnce) {
    const TimeSuite suite(m_host.basicSuite(), kTime, 1);
    EXPECT_EQ(m_host.calls().lines(), Lines{"Basic.AcquireSuite('Premiere Time Suite', 1)"});
    EXPECT_EQ(logged(), Lines{"Acquiring suite: r: 0, v: 1, n: 'Premiere Time Suite', ptr: <pointer>"});
}

TEST_F(HostSuiteHolders, DestructionReleases) {
    { const TimeSuite suite(m_host.basicSuite(), kTime, 1); }
    EXPECT_EQ(logged().back(), "Releasing suite: r: 0, v: 1, n: 'Premiere Time Suite'");
    EXPECT_EQ(m_host.problems(), Lines{});
}

TEST_F(HostSuiteHolders, GetReturnsTheHostsTable) {
    TimeSuite suite(m_host.basicSuite(), kTime, 1);
    const void* table = nullptr;
    m_host.acquire(kTime, 1, &table);
    m_host.release(kTime, 1);
    EXPECT_EQ(suite.get(), table);
    EXPECT_NE(table, nullptr);
}

TEST_F(HostSuiteHolders, GetDoesNotRequestAHeldSuiteAgain) {
    TimeSuite suite(m_host.basicSuite(), kTime, 1);
    suite.get();
    suite.get();
    EXPECT_EQ(m_host.calls().count(HostCall::AcquireSuite), 1);
    EXPECT_EQ(logged().size(), 1u);
}

TEST_F(HostSuiteHolders, ARefusalIsLoggedWithItsCodeAndLeavesNoSuite) {
    m_host.faults().fail(HostCall::AcquireSuite, -2147483648 + 3);
    const TimeSuite suite(m_host.basicSuite(), kTime, 1);
    EXPECT_EQ(logged(), Lines{"Acquiring suite: r: -2147483645, v: 1, n: 'Premiere Time Suite', ptr: <null>"});
}

TEST_F(HostSuiteHolders, APositiveRefusalIsARefusalToo) {
    TimeSuite suite(m_host.basicSuite(), "No Such Suite", 7);
    EXPECT_EQ(logged(), Lines{"Acquiring suite: r: 1394689636, v: 7, n: 'No Such Suite', ptr: <null>"});
}

TEST_F(HostSuiteHolders, AnEmptyHolderReleasesNothingAndLogsNothing) {
    m_host.faults().fail(HostCall::AcquireSuite, -1);
    {
        TimeSuite suite(m_host.basicSuite(), kTime, 1);
        suite.release();
    }
    EXPECT_EQ(m_host.calls().count(HostCall::ReleaseSuite), 0);
    EXPECT_EQ(logged().size(), 1u);
}

TEST_F(HostSuiteHolders, GetTriesASecondTimeForARefusedSuite) {
    m_host.faults().fail(HostCall::AcquireSuite, -1);
    TimeSuite suite(m_host.basicSuite(), kTime, 1);
    EXPECT_NE(suite.get(), nullptr);
    expectSameLines(logged(), {"Acquiring suite: r: -1, v: 1, n: 'Premiere Time Suite', ptr: <null>",
                               "Acquiring suite: r: 0, v: 1, n: 'Premiere Time Suite', ptr: <pointer>"});
}

TEST_F(HostSuiteHolders, GetThrowsWhenTheSuiteIsRefusedAgain) {
    TimeSuite suite(m_host.basicSuite(), "No Such Suite", 7);
    try {
        suite.get();
        FAIL() << "A refused suite was returned.";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Could not acquire suite: 'No Such Suite', ver: 7");
    }
    EXPECT_EQ(logged().size(), 2u);
}

TEST_F(HostSuiteHolders, ReleasingTwiceReleasesOnce) {
    TimeSuite suite(m_host.basicSuite(), kTime, 1);
    suite.release();
    suite.release();
    EXPECT_EQ(m_host.calls().count(HostCall::ReleaseSuite), 1);
    EXPECT_EQ(logged().size(), 2u);
}

TEST_F(HostSuiteHolders, AFailedReleaseIsLoggedAndOtherwiseIgnored) {
    m_host.faults().fail(HostCall::ReleaseSuite, -5);
    { const TimeSuite suite(m_host.basicSuite(), kTime, 1); }
    EXPECT_EQ(logged().back(), "Releasing suite: r: -5, v: 1, n: 'Premiere Time Suite'");
    EXPECT_EQ(m_host.calls().count(HostCall::ReleaseSuite), 1);
}

TEST_F(HostSuiteHolders, AReleasedHolderAcquiresAgainOnDemand) {
    TimeSuite suite(m_host.basicSuite(), kTime, 1);
    suite.release();
    EXPECT_NE(suite.get(), nullptr);
    EXPECT_EQ(m_host.calls().count(HostCall::AcquireSuite), 2);
}

TEST_F(HostSuiteHolders, TheSetAcquiresSixSuitesInOrder) {
    const ImporterSuites suites(m_host.basicSuite());
    expectSameLines(m_host.calls().lines(), {"Basic.AcquireSuite('Premiere PPix Creator Suite', 1)",
                                             "Basic.AcquireSuite('Premiere PPix Cache Suite', 6)",
                                             "Basic.AcquireSuite('Premiere PPix Suite', 1)",
                                             "Basic.AcquireSuite('Premiere Time Suite', 1)",
                                             "Basic.AcquireSuite('Premiere Image Processing Suite', 2)",
                                             "Basic.AcquireSuite('Premiere Audio Suite', 1)"});
}

TEST_F(HostSuiteHolders, TheSetReleasesInTheReverseOrder) {
    { const ImporterSuites suites(m_host.basicSuite()); }
    const Lines calls = m_host.calls().lines();
    ASSERT_EQ(calls.size(), 12u);
    expectSameLines(Lines(calls.begin() + 6, calls.end()),
                    {"Basic.ReleaseSuite('Premiere Audio Suite', 1)",
                     "Basic.ReleaseSuite('Premiere Image Processing Suite', 2)",
                     "Basic.ReleaseSuite('Premiere Time Suite', 1)", "Basic.ReleaseSuite('Premiere PPix Suite', 1)",
                     "Basic.ReleaseSuite('Premiere PPix Cache Suite', 6)",
                     "Basic.ReleaseSuite('Premiere PPix Creator Suite', 1)"});
}

TEST_F(HostSuiteHolders, ASetInterruptedByAnExceptionReleasesItsSuites) {
    m_host.faults().throwFrom(HostCall::AcquireSuite, "no more", 4);
    EXPECT_THROW(ImporterSuites{m_host.basicSuite()}, std::runtime_error);
    const Lines calls = m_host.calls().lines();
    ASSERT_EQ(calls.size(), 7u);
    expectSameLines(Lines(calls.begin() + 4, calls.end()),
                    {"Basic.ReleaseSuite('Premiere PPix Suite', 1)",
                     "Basic.ReleaseSuite('Premiere PPix Cache Suite', 6)",
                     "Basic.ReleaseSuite('Premiere PPix Creator Suite', 1)"});
    EXPECT_EQ(m_host.problems(), Lines{});
}

TEST_F(HostSuiteHolders, TheLazySetAcquiresNothingUntilItIsNeeded) {
    LazyImporterSuites suites;
    suites.setBasicSuite(m_host.basicSuite());
    EXPECT_EQ(m_host.calls().count(HostCall::AcquireSuite), 0);
}

TEST_F(HostSuiteHolders, TheLazySetIsCreatedOnce) {
    LazyImporterSuites suites;
    suites.setBasicSuite(m_host.basicSuite());
    ImporterSuites& first = suites.get();
    EXPECT_EQ(&suites.get(), &first);
    EXPECT_EQ(m_host.calls().count(HostCall::AcquireSuite), 6);
}

TEST_F(HostSuiteHolders, TheLazySetIsTriedAgainAfterAnException) {
    LazyImporterSuites suites;
    suites.setBasicSuite(m_host.basicSuite());
    m_host.faults().throwFrom(HostCall::AcquireSuite, "not now", 2);
    EXPECT_THROW(suites.get(), std::runtime_error);
    EXPECT_NE(suites.get().time.get(), nullptr);
}

}  // namespace
