// Hosts that throw. A host that throws from a release leaks what was released; everything else continues to work.
#include "importer/support/ImporterTest.h"

using hostkit::ClipSession;
using hostkit::HostCall;

namespace {

class ThrowingHost : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> clip() {
        auto opened = openClip("clip.avi", aviFile({shortVideo(3)}));
        standin().reset();
        return opened;
    }

    // Makes the next call of `thrower` throw something other than a standard exception.
    void throwANumberFrom(HostCall thrower) {
        host().faults().observe([this, thrower](HostCall call) {
            if (call == thrower) {
                host().faults().observe(nullptr);
                throw 42;
            }
        });
    }

    static csSDK_int32 frame(ClipSession& clip) {
        return clip.frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u)}).result;
    }
};

constexpr char kLostFrame[] = "A frame (vuyx, 8 x 4) was never disposed.";

}  // namespace

TEST_F(ThrowingHost, AtTheDisposalOfAFailedFrameIsLogged) {
    auto opened = clip();
    standin().fail(kStandinDecompress, 1, 1, 12);
    host().faults().throwFrom(HostCall::DisposePPix, "no disposal today");
    const Lines lines = logOf([&] { EXPECT_EQ(frame(*opened), 8); });
    EXPECT_EQ(countOf(lines, "ERROR: Dispose() failed: no disposal today"), 1u);
    EXPECT_EQ(lines.back(), "    [imBadCompression] (8)");
    EXPECT_EQ(host().errorEvents().size(), 0u);
    expectProblems({kLostFrame});
}

TEST_F(ThrowingHost, AtADisposalWithANonstandardExceptionIsLogged) {
    auto opened = clip();
    standin().fail(kStandinDecompress, 1, 1, 12);
    throwANumberFrom(HostCall::DisposePPix);
    const Lines lines = logOf([&] { EXPECT_EQ(frame(*opened), 8); });
    EXPECT_EQ(countOf(lines, "ERROR: Dispose() failed"), 1u);
    expectProblems({kLostFrame});
}

TEST_F(ThrowingHost, AtTheDisposalOfAFailedFrameGetsTheNextFrame) {
    auto opened = clip();
    standin().fail(kStandinDecompress, 1, 1, 12);
    host().faults().throwFrom(HostCall::DisposePPix, "no disposal today");
    EXPECT_EQ(frame(*opened), 8);
    EXPECT_EQ(frame(*opened), 0);
    EXPECT_EQ(host().frames().alive(), 1) << "the frame whose disposal threw";
    expectProblems({kLostFrame});
}

TEST_F(ThrowingHost, AtTheReleaseOfASuiteIsLoggedByTheClose) {
    auto opened = clip();
    host().faults().throwFrom(HostCall::ReleaseSuite, "no release today");
    EXPECT_EQ(logOf([&] { EXPECT_EQ(opened->close(), 0); }),
              (Lines{"----------------------", "[imCloseFile] (9)", "m_filePathUtf8: '<folder>/clip.avi'",
                     "m_streamIndex:  0", "QuorvaneImporter::~QuorvaneImporter()", "VideoInfo::~VideoInfo()",
                     "ERROR: ReleaseSuite() failed: no release today",
                     "Releasing suite: r: 0, v: 2, n: 'Premiere Image Processing Suite'",
                     "Releasing suite: r: 0, v: 1, n: 'Premiere Time Suite'",
                     "Releasing suite: r: 0, v: 1, n: 'Premiere PPix Suite'",
                     "Releasing suite: r: 0, v: 6, n: 'Premiere PPix Cache Suite'",
                     "Releasing suite: r: 0, v: 1, n: 'Premiere PPix Creator Suite'", "    [imNoErr] (0)"}));
    expectProblems({"The suite 'Premiere Audio Suite' version 1 was acquired 1 time and released 0 times."});
}

TEST_F(ThrowingHost, AtAReleaseWithANonstandardExceptionIsLogged) {
    auto opened = clip();
    throwANumberFrom(HostCall::ReleaseSuite);
    const Lines lines = logOf([&] { EXPECT_EQ(opened->close(), 0); });
    EXPECT_EQ(countOf(lines, "ERROR: ReleaseSuite() failed"), 1u);
    expectProblems({"The suite 'Premiere Audio Suite' version 1 was acquired 1 time and released 0 times."});
}

TEST_F(ThrowingHost, AtTheReleaseOfAllSuitesStillReleasesTheFile) {
    auto opened = clip();
    host().faults().throwFrom(HostCall::ReleaseSuite, "no release today", 1, 6);
    const Lines lines = logOf([&] { EXPECT_EQ(opened->close(), 0); });
    EXPECT_EQ(countOf(lines, "ERROR: ReleaseSuite() failed: no release today"), 6u);
    EXPECT_EQ(standin().counters().openInstances, 0u);
    ClipSession writer(session(), pathOf("clip.avi"), {.access = kPrOpenFileAccess_ReadWrite});
    EXPECT_EQ(writer.open().result, 0) << "a file that is still open cannot be opened for writing";
    const std::string one = "version 1 was acquired 1 time and released 0 times.";
    expectProblems({"The suite 'Premiere Audio Suite' " + one,
                    "The suite 'Premiere Image Processing Suite' version 2 was acquired 3 times and released 2 times.",
                    "The suite 'Premiere PPix Cache Suite' version 6 was acquired 1 time and released 0 times.",
                    "The suite 'Premiere PPix Creator Suite' " + one, "The suite 'Premiere PPix Suite' " + one,
                    "The suite 'Premiere Time Suite' " + one});
}

// The host knows of no channel, and would request sound without any buffer.
TEST_F(ThrowingHost, AtTheDescriptionGetsNoUndescribedStreams) {
    ClipSession clip(session(), write("sound.avi", aviFile({shortVideo(), audioStream({}), audioStream({})})));
    clip.open();
    host().faults().throwFrom(HostCall::AcquireSuite, "no suite today");
    EXPECT_EQ(clip.info(1).result, 99);
    const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(0, 20, 0).result, 99); });
    EXPECT_EQ(lines.back(), "FATAL: Unhandled exception during [imImportAudio7] (25): m_audioInfo is NULL");
    EXPECT_EQ(clip.info(1).result, imBadStreamIndex) << "the next description succeeds";
}

TEST_F(ThrowingHost, AtTheReleaseOfTheErrorSuiteMakesTheShutdownFail) {
    host().faults().throwFrom(HostCall::ReleaseSuite, "no release today");
    EXPECT_EQ(logOf([&] { EXPECT_EQ(session().shutdown(), 99); }),
              (Lines{"----------------------", "[imShutdown] (1)",
                     "FATAL: Unhandled exception during [imShutdown] (1): no release today"}));
    EXPECT_EQ(host().errorEvents().size(), 0u) << "the error suite is already released";
    EXPECT_EQ(session().shutdown(), 0) << "there is nothing left to release";
    expectProblems({"The suite 'Premiere Error Suite' version 3 was acquired 1 time and released 0 times."});
}
