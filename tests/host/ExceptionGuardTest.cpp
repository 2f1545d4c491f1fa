// Exceptions that a handler throws.
#include "HostFixture.h"

#include <algorithm>
#include <functional>

using hostkit::ErrorEvent;
using hostkit::HostCall;

namespace {

constexpr char kTitle[] = "QuorvaneImporter: Internal error";
constexpr char kFatal[] = "FATAL: Unhandled exception during [imGetSubTypeNames] (54): ";

// A call whose handler asks the host for memory, where these tests throw.
csSDK_int32 askForMemory(PluginRun& run) {
    imSubTypeDescriptionRec* block = nullptr;
    return run.call(imGetSubTypeNames, hostkit::asPointer(kFileType), &block);
}

// Makes the next request for memory call `thrower`.
void throwAtMemory(PluginRun& run, std::function<void()> thrower) {
    run.host().faults().observe([thrower = std::move(thrower)](HostCall call) {
        if (call == HostCall::NewPtr) {
            thrower();
        }
    });
}

bool contains(const Lines& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

TEST(ExceptionGuard, Returns99) {
    PluginRun run;
    run.session().init();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    EXPECT_EQ(askForMemory(run), 99);
}

TEST(ExceptionGuard, LogsTheReasonAndNoResultLine) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    askForMemory(run);
    expectSameLines(run.newMessages(), {kRule, "[imGetSubTypeNames] (54)", "filetype: AVIV",
                                        std::string(kFatal) + "the reason"});
}

TEST(ExceptionGuard, SendsTheHostOneErrorEvent) {
    PluginRun run;
    run.session().init();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    askForMemory(run);
    EXPECT_EQ(run.host().errorEvents(), (std::vector<ErrorEvent>{{3, kTitle, std::string(kFatal) + "the reason"}}));
}

TEST(ExceptionGuard, InformsTheHostEvenWhileTheLogIsOff) {
    PluginRun run({}, false);
    run.session().init();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.host().errorEvents(), (std::vector<ErrorEvent>{{3, kTitle, std::string(kFatal) + "the reason"}}));
}

TEST(ExceptionGuard, CarriesTextBeyondAscii) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    const std::string text = "\xC3\xBC \xE6\x98\xA0 \xF0\x9F\x8E\x9E";   // two, three and four bytes of UTF-8
    run.host().faults().throwFrom(HostCall::NewPtr, text);
    askForMemory(run);
    EXPECT_EQ(run.newMessages().back(), kFatal + text);
    ASSERT_EQ(run.host().errorEvents().size(), 1u);
    EXPECT_EQ(run.host().errorEvents().front().text, kFatal + text);
}

TEST(ExceptionGuard, CarriesAVeryLongText) {
    PluginRun run;
    run.session().init();
    const std::string text(100000, 'r');
    run.host().faults().throwFrom(HostCall::NewPtr, text);
    askForMemory(run);
    EXPECT_EQ(run.host().errorEvents().at(0).text, kFatal + text);
}

TEST(ExceptionGuard, BeforeInitSendsNoEvent) {
    PluginRun run;
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.messages().back(), std::string(kFatal) + "the reason");
    EXPECT_EQ(run.host().errorEvents(), std::vector<ErrorEvent>{});
    EXPECT_EQ(run.host().calls().count(HostCall::AcquireSuite), 0);
}

TEST(ExceptionGuard, AfterShutdownSendsNoEvent) {
    PluginRun run;
    run.session().init();
    run.session().shutdown();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.messages().back(), std::string(kFatal) + "the reason");
    EXPECT_EQ(run.host().errorEvents(), std::vector<ErrorEvent>{});
}

TEST(ExceptionGuard, BeforeInitAcquiresTheErrorSuiteSendsNoEvent) {
    PluginRun run;
    run.host().faults().throwFrom(HostCall::GetSPBasicSuite, "no basic suite");
    EXPECT_EQ(run.session().init().result, 99);
    EXPECT_EQ(run.messages().back(), "FATAL: Unhandled exception during [imInit] (0): no basic suite");
    EXPECT_EQ(run.host().errorEvents(), std::vector<ErrorEvent>{});
}

TEST(ExceptionGuard, KeepsAnOlderErrorSuiteWhenASecondInitFails) {
    PluginRun run;
    run.session().init();
    run.host().faults().throwFrom(HostCall::AcquireSuite, "not now");
    EXPECT_EQ(run.session().init().result, 99);
    EXPECT_EQ(run.host().errorEvents().size(), 1u);
    run.session().shutdown();
    EXPECT_EQ(run.host().problems(), Lines{});
}

TEST(ExceptionGuard, AnEmptyTextReadsUnknownException) {
    PluginRun run;
    run.session().init();
    throwAtMemory(run, [] { throw std::runtime_error(""); });
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.messages().back(), std::string(kFatal) + "Unknown exception");
    EXPECT_EQ(run.host().errorEvents().at(0).text, std::string(kFatal) + "Unknown exception");
}

TEST(ExceptionGuard, TheLibrarysDefaultTextReadsUnknownException) {
    PluginRun run;
    run.session().init();
    throwAtMemory(run, [] { throw std::exception(); });
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.messages().back(), std::string(kFatal) + "Unknown exception");
}

TEST(ExceptionGuard, ANullTextReadsUnknownException) {
    struct Mute : std::exception {
        const char* what() const noexcept override { return nullptr; }
    };
    PluginRun run;
    run.session().init();
    throwAtMemory(run, [] { throw Mute(); });
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.messages().back(), std::string(kFatal) + "Unknown exception");
}

TEST(ExceptionGuard, CatchesAnythingDerivedFromStdException) {
    struct Own : std::exception {
        const char* what() const noexcept override { return "a text of its own"; }
    };
    PluginRun run;
    run.session().init();
    throwAtMemory(run, [] { throw Own(); });
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.messages().back(), std::string(kFatal) + "a text of its own");
}

TEST(ExceptionGuard, LetsOtherExceptionsPass) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    throwAtMemory(run, [] { throw 42; });
    try {
        askForMemory(run);
        FAIL() << "The exception did not arrive.";
    } catch (int number) {
        EXPECT_EQ(number, 42);
    }
    expectSameLines(run.newMessages(), {kRule, "[imGetSubTypeNames] (54)", "filetype: AVIV"});
    EXPECT_EQ(run.host().errorEvents(), std::vector<ErrorEvent>{});
}

TEST(ExceptionGuard, ThrowsToTheHostWhenTheErrorSuiteIsRefused) {
    PluginRun run(hostkit::hostProfile("no-error-suite"));
    run.session().init();
    run.newMessages();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    EXPECT_EQ(run.session().subTypeNames(kFileType).result, hostkit::kEscapedException);
    EXPECT_EQ(run.session().escapedText(), "Could not acquire suite: 'Premiere Error Suite', ver: 3");
    expectSameLines(run.newMessages(),
                    {kRule, "[imGetSubTypeNames] (54)", "filetype: AVIV", std::string(kFatal) + "the reason",
                     "Acquiring suite: r: 1394689636, v: 3, n: 'Premiere Error Suite', ptr: <null>"});
}

TEST(ExceptionGuard, AcquiresTheErrorSuiteIfInitDidNotGetIt) {
    PluginRun run;
    run.host().faults().fail(HostCall::AcquireSuite, -1);
    run.session().init();
    run.newMessages();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    EXPECT_EQ(askForMemory(run), 99);
    EXPECT_EQ(run.newMessages().back(), "Acquiring suite: r: 0, v: 3, n: 'Premiere Error Suite', ptr: <pointer>");
    EXPECT_EQ(run.host().errorEvents().size(), 1u);
    run.session().shutdown();
    EXPECT_EQ(run.host().problems(), Lines{});
}

TEST(ExceptionGuard, AnErrorSuiteThatFailsChangesNothing) {
    PluginRun run;
    run.session().init();
    run.host().faults().fail(HostCall::SetEventString, -1);
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    EXPECT_EQ(askForMemory(run), 99);
}

TEST(ExceptionGuard, TheNextCallWorks) {
    PluginRun run;
    run.session().init();
    run.host().faults().throwFrom(HostCall::NewPtr, "the reason");
    askForMemory(run);
    EXPECT_EQ(run.session().subTypeNames(kFileType).records.size(), 16u);
}

// ---- with a file ---------------------------------------------------------------------------------------------

class GuardedClip : public testing::Test {
protected:
    GuardedClip() { m_run.session().init(); }

    // Expects that everything is released, whatever was thrown before.
    void endCleanly() {
        m_run.host().faults().clear();
        m_clip.close();
        m_run.session().shutdown();
        EXPECT_EQ(m_run.host().problems(), Lines{});
        expectCodecAtRest();
    }

    ClipFile m_file;
    PluginRun m_run;
    hostkit::ClipSession m_clip{m_run.session(), m_file.path()};
};

TEST_F(GuardedClip, OpenThatThrowsLeavesNoObject) {
    m_run.host().faults().throwFrom(HostCall::GetSPBasicSuite, "no basic suite");
    const auto answer = m_clip.open();
    EXPECT_EQ(answer.result, 99);
    EXPECT_EQ(hostkit::valueOf(answer->privatedata), nullptr);
    EXPECT_EQ(m_run.messages().back(), "FATAL: Unhandled exception during [imOpenFile8] (39): no basic suite");
    endCleanly();
}

TEST_F(GuardedClip, InfoThatThrowsReleasesTheSuitesAndWorksAgain) {
    m_clip.open();
    for (int nth = 1; nth <= 6; ++nth) {
        m_run.host().faults().throwFrom(HostCall::AcquireSuite, "not now", nth);
        EXPECT_EQ(m_clip.info(0).result, 99) << nth;
        EXPECT_EQ(m_run.host().suitesHeld(), 1) << nth;
    }
    EXPECT_EQ(m_clip.info(0).result, imNoErr);
    endCleanly();
}

TEST_F(GuardedClip, InfoThatThrowsInTheTimeSuiteClosesTheCodec) {
    m_clip.open();
    m_run.host().faults().throwFrom(HostCall::GetTicksPerSecond, "no time");
    EXPECT_EQ(m_clip.info(0).result, 99);
    expectCodecAtRest();
    endCleanly();
}

class ThrowingFrameCall : public GuardedClip, public testing::WithParamInterface<HostCall> {};

TEST_P(ThrowingFrameCall, LosesOneFrameAndNothingElse) {
    m_clip.open();
    m_clip.info(0);
    m_run.host().faults().throwFrom(GetParam(), "not this one");
    EXPECT_EQ(m_clip.frame(0, smallFrame()).result, 99);
    EXPECT_EQ(m_run.messages().back(), "FATAL: Unhandled exception during [imGetSourceVideo] (47): not this one");
    EXPECT_EQ(m_clip.frame(0, smallFrame()).result, imNoErr);
    endCleanly();
}

INSTANTIATE_TEST_SUITE_P(ExceptionGuard, ThrowingFrameCall,
                         testing::Values(HostCall::CreatePPix, HostCall::GetPixels, HostCall::GetRowBytes),
                         [](const testing::TestParamInfo<HostCall>& call) {
                             const std::string name = hostkit::callName(call.param);
                             return name.substr(name.find('.') + 1);
                         });

// A clip that is open but not described has no streams yet.
TEST_F(GuardedClip, VideoRequestsBeforeTheDescriptionAreCaught) {
    m_clip.open();
    EXPECT_EQ(m_clip.analysis().result, 99);
    EXPECT_EQ(m_clip.dataRate().sizeCall.result, 99);
    EXPECT_EQ(m_clip.pixelFormat(0).result, 99);
    EXPECT_EQ(m_clip.frame(0, smallFrame()).result, 99);
    const Lines messages = m_run.messages();
    for (const char* call : {"[imAnalysis] (12)", "[imDataRateAnalysis] (13)", "[imGetIndPixelFormat] (27)",
                             "[imGetSourceVideo] (47)"}) {
        EXPECT_TRUE(contains(messages, "FATAL: Unhandled exception during " + std::string(call) +
                                           ": m_videoInfo is NULL"))
            << call;
    }
    endCleanly();
}

TEST_F(GuardedClip, TheChannelLayoutBeforeTheDescriptionIsCaught) {
    m_clip.open();
    EXPECT_EQ(m_clip.channelLayout().result, 99);
    EXPECT_EQ(m_run.messages().back(),
              "FATAL: Unhandled exception during [imGetAudioChannelLayout] (64): m_audioInfo is NULL");
    endCleanly();
}

}  // namespace
