// The six suites of an opened file, and what still works in a host that lacks one of them.
#include "HostFixture.h"

#include <algorithm>

using hostkit::HostCall;

namespace {

hostkit::HostProfile hostWithout(const char* suite) {
    hostkit::HostProfile profile;
    profile.refusedSuites = {{suite, hostkit::kEveryVersion}};
    return profile;
}

// A host, the plug-in after its init, and a clip that is not open yet.
class ClipOf {
public:
    explicit ClipOf(hostkit::HostProfile profile = {}) : m_run(std::move(profile)) {
        EXPECT_EQ(m_run.session().init().result, imNoErr);
        m_run.newMessages();
    }

    PluginRun& run() { return m_run; }
    hostkit::ClipSession& clip() { return m_clip; }

    // Closes everything; nothing may be left.
    void end() {
        m_clip.close();
        m_run.session().shutdown();
        EXPECT_EQ(m_run.host().problems(), Lines{});
        expectCodecAtRest();
    }

private:
    ClipFile m_file;
    PluginRun m_run;
    hostkit::ClipSession m_clip{m_run.session(), m_file.path()};
};

const Lines kSixAcquired = {
    "Acquiring suite: r: 0, v: 1, n: 'Premiere PPix Creator Suite', ptr: <pointer>",
    "Acquiring suite: r: 0, v: 6, n: 'Premiere PPix Cache Suite', ptr: <pointer>",
    "Acquiring suite: r: 0, v: 1, n: 'Premiere PPix Suite', ptr: <pointer>",
    "Acquiring suite: r: 0, v: 1, n: 'Premiere Time Suite', ptr: <pointer>",
    "Acquiring suite: r: 0, v: 2, n: 'Premiere Image Processing Suite', ptr: <pointer>",
    "Acquiring suite: r: 0, v: 1, n: 'Premiere Audio Suite', ptr: <pointer>",
};

const Lines kSixReleased = {
    "Releasing suite: r: 0, v: 1, n: 'Premiere Audio Suite'",
    "Releasing suite: r: 0, v: 2, n: 'Premiere Image Processing Suite'",
    "Releasing suite: r: 0, v: 1, n: 'Premiere Time Suite'",
    "Releasing suite: r: 0, v: 1, n: 'Premiere PPix Suite'",
    "Releasing suite: r: 0, v: 6, n: 'Premiere PPix Cache Suite'",
    "Releasing suite: r: 0, v: 1, n: 'Premiere PPix Creator Suite'",
};

std::string missing(const char* suite, const char* version, const char* selector) {
    return std::string("FATAL: Unhandled exception during ") + selector + ": Could not acquire suite: '" + suite +
           "', ver: " + version;
}

TEST(ClipSuites, AreNotAcquiredByTheOpen) {
    ClipOf clip;
    clip.clip().open();
    EXPECT_EQ(suiteLines(clip.run().newMessages()), Lines{});
    clip.end();
}

TEST(ClipSuites, AreAcquiredInOrderByTheFirstDescription) {
    ClipOf clip;
    clip.clip().open();
    clip.clip().info(0);
    expectSameLines(suiteLines(clip.run().newMessages()), kSixAcquired);
    clip.end();
}

TEST(ClipSuites, AreAcquiredOnce) {
    ClipOf clip;
    clip.clip().open();
    clip.clip().info(0);
    clip.run().newMessages();
    clip.clip().info(0);
    clip.clip().frame(0, smallFrame());
    clip.clip().audio(0, 8, 2);
    EXPECT_EQ(suiteLines(clip.run().newMessages()), Lines{});
    clip.end();
}

TEST(ClipSuites, AreKeptWhileTheFileIsQuiet) {
    ClipOf clip;
    clip.clip().open();
    clip.clip().info(0);
    clip.run().newMessages();
    clip.clip().quiet();
    clip.clip().open();
    clip.clip().info(0);
    EXPECT_EQ(suiteLines(clip.run().newMessages()), Lines{});
    clip.end();
}

TEST(ClipSuites, AreReleasedInTheReverseOrderByTheClose) {
    ClipOf clip;
    clip.clip().open();
    clip.clip().info(0);
    clip.run().newMessages();
    clip.clip().close();
    expectSameLines(suiteLines(clip.run().newMessages()), kSixReleased);
    clip.end();
}

TEST(ClipSuites, AreNotReleasedIfNeverAcquired) {
    ClipOf clip;
    clip.clip().open();
    clip.run().newMessages();
    clip.clip().close();
    EXPECT_EQ(suiteLines(clip.run().newMessages()), Lines{});
    clip.end();
}

TEST(ClipSuites, AreAcquiredForEachOfTwoClips) {
    ClipFile file;
    ClipOf clip;
    hostkit::ClipSession other(clip.run().session(), file.path());
    clip.clip().open();
    clip.clip().info(0);
    other.open();
    other.info(0);
    EXPECT_EQ(clip.run().host().suitesHeld(), 13);
    other.close();
    clip.end();
}

TEST(ClipSuites, WithoutTheCacheSuiteFramesAreDelivered) {
    for (const char* profile : {"no-cache-suite", "old-cache-suite"}) {
        ClipOf clip(hostkit::hostProfile(profile));
        EXPECT_EQ(clip.clip().open().result, imNoErr);
        EXPECT_EQ(clip.clip().info(0).result, imNoErr);
        EXPECT_EQ(clip.clip().frame(0, smallFrame()).result, imNoErr);
        EXPECT_EQ(clip.clip().audio(0, 8, 2).result, imNoErr);
        Lines expected = kSixAcquired;
        expected[1] = "Acquiring suite: r: 1394689636, v: 6, n: 'Premiere PPix Cache Suite', ptr: <null>";
        expectSameLines(suiteLines(clip.run().newMessages()), expected);
        clip.end();
    }
}

TEST(ClipSuites, WithoutTheCacheSuiteFiveAreReleased) {
    ClipOf clip(hostkit::hostProfile("no-cache-suite"));
    clip.clip().open();
    clip.clip().info(0);
    clip.run().newMessages();
    clip.clip().close();
    Lines expected = kSixReleased;
    expected.erase(expected.begin() + 4);
    expectSameLines(suiteLines(clip.run().newMessages()), expected);
    clip.end();
}

TEST(ClipSuites, NoFunctionOfTheCacheSuiteIsCalled) {
    ClipOf clip;
    clip.clip().open();
    clip.clip().info(0);
    clip.clip().frame(0, smallFrame());
    clip.end();
    EXPECT_EQ(clip.run().host().calls().count(HostCall::PPixCacheCall), 0);
}

TEST(ClipSuites, WithoutThePPixSuiteEveryFrameFails) {
    ClipOf clip(hostkit::hostProfile("no-ppix-suite"));
    clip.clip().open();
    EXPECT_EQ(clip.clip().info(0).result, imNoErr);
    const std::string text = missing("Premiere PPix Suite", "1", "[imGetSourceVideo] (47)");
    for (int frame = 0; frame < 2; ++frame) {
        EXPECT_EQ(clip.clip().frame(0, smallFrame()).result, kExceptionResult);
        EXPECT_EQ(clip.run().newMessages().back(), text);
    }
    EXPECT_EQ(clip.run().host().errorEvents(),
              (std::vector<hostkit::ErrorEvent>(2, {3, "QuorvaneImporter: Internal error", text})));
    clip.end();
}

TEST(ClipSuites, WithoutThePPixSuiteSoundAndDescriptionsWork) {
    ClipOf clip(hostkit::hostProfile("no-ppix-suite"));
    clip.clip().open();
    EXPECT_EQ(hostkit::valueOf(clip.clip().info(0)->vidInfo.imageWidth), 32);
    EXPECT_EQ(clip.clip().audio(0, 8, 2).result, imNoErr);
    EXPECT_EQ(clip.clip().analysis().result, imNoErr);
    EXPECT_GT(clip.clip().pixelFormats().size(), 0u);
    clip.end();
}

TEST(ClipSuites, APPixSuiteAtTheSecondAttemptDeliversFrames) {
    ClipOf clip;
    clip.clip().open();
    clip.run().host().faults().fail(HostCall::AcquireSuite, -1, 3);
    clip.clip().info(0);
    clip.run().newMessages();
    EXPECT_EQ(clip.clip().frame(0, smallFrame()).result, imNoErr);
    EXPECT_EQ(suiteLines(clip.run().newMessages()), Lines{kSixAcquired[2]});
    clip.end();
}

TEST(ClipSuites, WithoutThePPixCreatorSuiteEveryFrameFails) {
    ClipOf clip(hostWithout("Premiere PPix Creator Suite"));
    clip.clip().open();
    EXPECT_EQ(clip.clip().info(0).result, imNoErr);
    EXPECT_EQ(clip.clip().audio(0, 8, 2).result, imNoErr);
    EXPECT_EQ(clip.clip().frame(0, smallFrame()).result, kExceptionResult);
    EXPECT_EQ(clip.run().newMessages().back(),
              missing("Premiere PPix Creator Suite", "1", "[imGetSourceVideo] (47)"));
    clip.end();
}

TEST(ClipSuites, WithoutTheTimeSuiteTheDescriptionFails) {
    ClipOf clip(hostWithout("Premiere Time Suite"));
    EXPECT_EQ(clip.clip().open().result, imNoErr);
    EXPECT_EQ(clip.clip().info(0).result, kExceptionResult);
    EXPECT_EQ(clip.run().newMessages().back(), missing("Premiere Time Suite", "1", "[imGetInfo8] (37)"));
    clip.end();
}

TEST(ClipSuites, WithoutTheTimeSuiteNothingStaysOpenInTheCodec) {
    ClipOf clip(hostWithout("Premiere Time Suite"));
    clip.clip().open();
    clip.clip().info(0);
    clip.clip().info(0);
    expectCodecAtRest();
    clip.end();
}

TEST(ClipSuites, WithoutTheImageSuiteAfterInitFramesAreDelivered) {
    ClipOf clip;
    clip.clip().open();
    clip.run().host().faults().fail(HostCall::AcquireSuite, -1, 5);
    EXPECT_EQ(clip.clip().info(0).result, imNoErr);
    EXPECT_EQ(suiteLines(clip.run().newMessages()).at(4),
              "Acquiring suite: r: -1, v: 2, n: 'Premiere Image Processing Suite', ptr: <null>");
    EXPECT_EQ(clip.clip().frame(0, smallFrame()).result, imNoErr);
    EXPECT_EQ(suiteLines(clip.run().newMessages()), Lines{});
    clip.end();
}

TEST(ClipSuites, WithoutTheAudioSuiteFramesAreDelivered) {
    ClipOf clip(hostWithout("Premiere Audio Suite"));
    clip.clip().open();
    EXPECT_EQ(clip.clip().info(0).result, imNoErr);
    EXPECT_EQ(clip.clip().frame(0, smallFrame()).result, imNoErr);
    clip.end();
}

TEST(ClipSuites, WithoutTheAudioSuiteIntegerSoundFails) {
    ClipOf clip(hostWithout("Premiere Audio Suite"));
    clip.clip().open();
    clip.clip().info(0);
    EXPECT_EQ(clip.clip().audio(0, 8, 2).result, kExceptionResult);
    EXPECT_EQ(clip.run().newMessages().back(), missing("Premiere Audio Suite", "1", "[imImportAudio7] (25)"));
    clip.end();
}

}  // namespace
