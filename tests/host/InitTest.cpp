// imInit and imShutdown: what they write, and which suites they acquire and release.
#include "HostFixture.h"

#include <cstring>

using hostkit::ByteRange;
using hostkit::HostCall;

namespace {

constexpr char kTakeErrorSuite[] = "Acquiring suite: r: 0, v: 3, n: 'Premiere Error Suite', ptr: <pointer>";
constexpr char kGiveErrorSuite[] = "Releasing suite: r: 0, v: 3, n: 'Premiere Error Suite'";
constexpr char kTakeImageSuite[] = "Acquiring suite: r: 0, v: 2, n: 'Premiere Image Processing Suite', ptr: <pointer>";
constexpr char kGiveImageSuite[] = "Releasing suite: r: 0, v: 2, n: 'Premiere Image Processing Suite'";
constexpr char kNoImageSuite[] =
    "Acquiring suite: r: 1394689636, v: 2, n: 'Premiere Image Processing Suite', ptr: <null>";
constexpr char kNoImageSuiteError[] =
    "FATAL: Unhandled exception during [imInit] (0): "
    "Could not acquire suite: 'Premiere Image Processing Suite', ver: 2";

hostkit::HostProfile refusing(const char* suite) {
    hostkit::HostProfile profile;
    profile.refusedSuites = {{suite, hostkit::kEveryVersion}};
    return profile;
}

// A record followed by further bytes, all 0xA5, so that any write shows.
hostkit::HostRecord<imImportInfoRec> filledRecord() {
    hostkit::HostRecord<imImportInfoRec> record(sizeof(imImportInfoRec) + 64);
    std::memset(record.data(), 0xA5, record.size());
    return record;
}

csSDK_int32 valueAt(const hostkit::RecordStorage& record, std::size_t offset) {
    csSDK_int32 value = 0;
    std::memcpy(&value, static_cast<const char*>(record.data()) + offset, sizeof value);
    return value;
}

TEST(Init, WritesTwoFieldsOfItsRecordAndNothingElse) {
    PluginRun run;
    const auto answer = run.session().exchangeFirst(imInit, filledRecord());
    EXPECT_EQ(answer.result, imNoErr);
    EXPECT_EQ(answer.written, (std::vector<ByteRange>{{52, 4}, {72, 4}}));
    EXPECT_EQ(valueAt(answer.record, 52), 200);
    EXPECT_EQ(valueAt(answer.record, 72), 1);
}

TEST(Init, WritesNoMoreForANewerHost) {
    PluginRun run(hostkit::hostProfile("editor-14"));
    const auto answer = run.session().exchangeFirst(imInit, filledRecord());
    EXPECT_EQ(answer.result, imNoErr);
    EXPECT_EQ(answer.written, (std::vector<ByteRange>{{52, 4}, {72, 4}}));
}

TEST(Init, AcquiresTheErrorSuiteAndTheImageSuiteTwice) {
    PluginRun run;
    run.session().init();
    expectSameLines(suiteLines(run.newMessages()), {kTakeErrorSuite, kTakeImageSuite, kGiveImageSuite, kTakeImageSuite,
                                                    kGiveImageSuite});
    EXPECT_EQ(run.host().suitesHeld(), 1);
}

TEST(Init, MakesItsHostCallsInThatOrder) {
    PluginRun run({}, false);
    run.host().calls().keepLines(true);
    run.session().init();
    expectSameLines(run.host().calls().lines(),
                    {"Utility.getSPBasicSuite()", "Basic.AcquireSuite('Premiere Error Suite', 3)",
                     "Basic.AcquireSuite('Premiere Image Processing Suite', 2)",
                     "Basic.ReleaseSuite('Premiere Image Processing Suite', 2)",
                     "Basic.AcquireSuite('Premiere Image Processing Suite', 2)",
                     "Basic.ReleaseSuite('Premiere Image Processing Suite', 2)"});
}

TEST(Init, TwiceAcquiresTheNewErrorSuiteBeforeReleasing) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    EXPECT_EQ(run.session().init().result, imNoErr);
    expectSameLines(suiteLines(run.newMessages()), {kTakeErrorSuite, kGiveErrorSuite, kTakeImageSuite, kGiveImageSuite,
                                                    kTakeImageSuite, kGiveImageSuite});
    run.session().shutdown();
    EXPECT_EQ(run.host().problems(), Lines{});
}

TEST(Init, TwiceWithoutTheErrorSuiteReleasesNothing) {
    PluginRun run(refusing("Premiere Error Suite"));
    run.session().init();
    run.newMessages();
    run.session().init();
    expectSameLines(suiteLines(run.newMessages()),
                    {"Acquiring suite: r: 1394689636, v: 3, n: 'Premiere Error Suite', ptr: <null>", kTakeImageSuite,
                     kGiveImageSuite, kTakeImageSuite, kGiveImageSuite});
}

TEST(Init, SucceedsWithoutTheErrorSuite) {
    PluginRun run(hostkit::hostProfile("no-error-suite"));
    EXPECT_EQ(run.session().init().result, imNoErr);
    EXPECT_EQ(suiteLines(run.newMessages()).front(),
              "Acquiring suite: r: 1394689636, v: 3, n: 'Premiere Error Suite', ptr: <null>");
}

TEST(Init, FailsWithoutTheImageSuite) {
    PluginRun run(refusing("Premiere Image Processing Suite"));
    const auto answer = run.session().exchangeFirst(imInit, filledRecord());
    EXPECT_EQ(answer.result, kExceptionResult);
    EXPECT_EQ(answer.written, std::vector<ByteRange>{});
}

TEST(Init, WithoutTheImageSuiteTriesTwiceAndReportsIt) {
    PluginRun run(refusing("Premiere Image Processing Suite"));
    run.session().init();
    const Lines messages = run.newMessages();
    expectSameLines(Lines(messages.begin() + 2, messages.end()), {kRule, "[imInit] (0)", kTakeErrorSuite, kNoImageSuite,
                                                                  kNoImageSuite, kNoImageSuiteError});
    EXPECT_EQ(run.host().errorEvents(),
              (std::vector<hostkit::ErrorEvent>{{3, "QuorvaneImporter: Internal error", kNoImageSuiteError}}));
}

TEST(Init, ThatFailedKeepsTheErrorSuiteForTheShutdown) {
    PluginRun run(refusing("Premiere Image Processing Suite"));
    run.session().init();
    EXPECT_EQ(run.host().suitesHeld(), 1);
    EXPECT_EQ(run.session().shutdown(), imNoErr);
    EXPECT_EQ(run.host().problems(), Lines{});
}

TEST(Init, SucceedsIfTheSecondAttemptGetsTheImageSuite) {
    PluginRun run;
    run.host().faults().fail(HostCall::AcquireSuite, -7, 2);
    EXPECT_EQ(run.session().init().result, imNoErr);
    EXPECT_EQ(suiteLines(run.newMessages()).at(1),
              "Acquiring suite: r: -7, v: 2, n: 'Premiere Image Processing Suite', ptr: <null>");
}

TEST(Shutdown, ReleasesTheErrorSuite) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    EXPECT_EQ(run.session().shutdown(), imNoErr);
    expectSameLines(run.newMessages(), {kRule, "[imShutdown] (1)", kGiveErrorSuite, "    [imNoErr] (0)"});
    EXPECT_EQ(run.host().problems(), Lines{});
}

TEST(Shutdown, ASecondTimeDoesNothing) {
    PluginRun run;
    run.session().init();
    run.session().shutdown();
    run.newMessages();
    EXPECT_EQ(run.session().shutdown(), imNoErr);
    expectSameLines(run.newMessages(), {kRule, "[imShutdown] (1)", "    [imNoErr] (0)"});
    EXPECT_EQ(run.host().problems(), Lines{});
}

TEST(Shutdown, WithoutAnInitDoesNothing) {
    PluginRun run;
    EXPECT_EQ(run.session().shutdown(), imNoErr);
    EXPECT_EQ(run.host().calls().count(HostCall::ReleaseSuite), 0);
}

TEST(Shutdown, WithoutAnErrorSuiteReleasesNothing) {
    PluginRun run(hostkit::hostProfile("no-error-suite"));
    run.session().init();
    run.newMessages();
    EXPECT_EQ(run.session().shutdown(), imNoErr);
    EXPECT_EQ(suiteLines(run.newMessages()), Lines{});
}

TEST(Shutdown, LogsAFailedReleaseAndSucceeds) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    run.host().faults().fail(HostCall::ReleaseSuite, -3);
    EXPECT_EQ(run.session().shutdown(), imNoErr);
    EXPECT_EQ(suiteLines(run.newMessages()), Lines{"Releasing suite: r: -3, v: 3, n: 'Premiere Error Suite'"});
}

TEST(Shutdown, CanBeFollowedByAnotherInit) {
    PluginRun run;
    run.session().init();
    run.session().shutdown();
    EXPECT_EQ(run.session().init().result, imNoErr);
    EXPECT_EQ(run.session().shutdown(), imNoErr);
    EXPECT_EQ(run.host().problems(), Lines{});
}

}  // namespace
