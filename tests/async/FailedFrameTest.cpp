// Frames that cannot be decoded: the host gets aiUnknownError, the log the importer's own code, and the importer
// continues to work.
#include "async/support/AsyncTest.h"

namespace {

class FailedFrame : public AsyncTest {
protected:
    // Expects the frame to fail in the same way whether announced or not, and leave nothing behind.
    void expectFailure(hostkit::ClipSession& clip, int frame, const std::vector<imFrameFormat>& formats,
                       const std::string& reason, const std::string& code, const std::function<void()>& prepare = {}) {
        AsyncClip& async = openAsync(clip);
        for (const bool isAnnounced : {true, false}) {
            SCOPED_TRACE(isAnnounced ? "announced" : "not announced");
            if (prepare) {
                prepare();
            }
            const std::ptrdiff_t reasonsBefore = logged(reason);
            if (isAnnounced) {
                EXPECT_EQ(async.announce(timeOf(frame), formats), aiNoError);
            }
            const LoggedLines lines = linesOf([&] {
                EXPECT_EQ(async.collect(timeOf(frame), formats).result, aiUnknownError);
            });
            EXPECT_EQ(lines.caller.back(), "    OnGetFrame: [aiUnknownError] (2), [" + code);
            EXPECT_EQ(logged(reason), reasonsBefore + 1);
            EXPECT_EQ(host().frames().alive(), 0);
            expectFrame(async, clip, 1);
        }
    }
};

TEST_F(FailedFrame, InAnotherSize) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    expectFailure(clip, 2, only(PrPixelFormat_YUYV_422_8u_709, 64, 16),
                  "ERROR: frame size mismatch (64, 16) != (32, 16)", "imOtherErr] (5)");
}

TEST_F(FailedFrame, WithoutAFormat) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    expectFailure(clip, 2, {}, "ERROR: frameFormats is empty", "imOtherErr] (5)");
}

TEST_F(FailedFrame, AfterTheLastFrame) {
    hostkit::ClipSession& clip = openClip(smallVideo(6));
    expectFailure(clip, 6, yuy3(), "frameIndex out of bounds", "imFrameNotFound] (28)");
}

TEST_F(FailedFrame, PastTheEndOfTheFile) {
    const auto path = write("clip.avi", withFrameBeyondTheEnd(smallVideo(), 5));
    hostkit::ClipSession& clip = openClip(path);
    // Number of bytes in the file from the last frame on.
    const aviwriter::Bytes file = aviwriter::sampleBytes(smallVideo());
    const std::size_t left = file.size() - (aviwriter::positionOf(file, "00dc", 5) + 8);
    expectFailure(clip, 5, yuy3(),
                  "Failed to read frame from AVI: Read error: size: 16000000, read: " + std::to_string(left),
                  "imFileReadFailed] (33)");
}

TEST_F(FailedFrame, RefusedByTheCodec) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    clip.frame(0, yuy3());
    const int createdBefore = host().frames().created();
    AsyncClip& async = openAsync(clip);
    failCodec(kStandinDecompress);
    async.announce(timeOf(2), yuy3());
    EXPECT_EQ(async.collect(timeOf(2), yuy3()).result, aiUnknownError);
    EXPECT_EQ(logged("    OnGetFrame: [aiUnknownError] (2), [imBadCompression] (8)"), 1);
    EXPECT_EQ(host().frames().created(), createdBefore + 1);
    EXPECT_EQ(host().frames().alive(), 0);
    expectFrame(async, clip, 2);
}

TEST_F(FailedFrame, WhoseCodecSessionCannotBegin) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    clip.frame(0, yuy3());
    const int createdBefore = host().frames().created();
    AsyncClip& async = openAsync(clip);
    failCodec(kStandinDecompressBegin);
    async.announce(timeOf(2), yuy3());
    EXPECT_EQ(async.collect(timeOf(2), yuy3()).result, aiUnknownError);
    EXPECT_EQ(logged("    OnGetFrame: [aiUnknownError] (2), [imBadCompression] (8)"), 1);
    EXPECT_EQ(host().frames().created(), createdBefore) << "a buffer for a frame that cannot be decoded";
    expectFrame(async, clip, 2);
}

TEST_F(FailedFrame, ForWhichTheHostCreatesNoBuffer) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    expectFailure(clip, 2, yuy3(), "ERROR: CreatePPix() failed: -2147483646", "imOtherErr] (5)",
                  [&] { host().faults().fail(hostkit::HostCall::CreatePPix, hostkit::kSuiteOutOfMemory); });
}

TEST_F(FailedFrame, WhosePixelsTheHostWithholds) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    expectFailure(clip, 2, yuy3(), "ERROR: GetPixels() failed: -2147483648", "imOtherErr] (5)",
                  [&] { host().faults().fail(hostkit::HostCall::GetPixels, hostkit::kSuiteFail); });
}

TEST_F(FailedFrame, InAClipWithOnlyEmptyFrames) {
    aviwriter::SampleOptions options = smallVideo(3);
    options.dropped = {0, 1, 2};
    AsyncClip& async = openAsync(options);
    async.announce(timeOf(1), yuy3());
    EXPECT_EQ(async.collect(timeOf(1), yuy3()).result, aiUnknownError);
    EXPECT_EQ(logged("    OnGetFrame: [aiUnknownError] (2), [imFrameNotFound] (28)"), 1);
}

TEST_F(FailedFrame, IsDroppedSilentlyByAFlush) {
    AsyncClip& async = openAsync(smallVideo());
    async.announce(timeOf(99), yuy3());
    async.announce(timeOf(1), only(PrPixelFormat_YUYV_422_8u_709, 1, 1));
    failCodec(kStandinDecompress);
    async.announce(timeOf(2), yuy3());
    EXPECT_EQ(async.flush(), aiNoError);
    EXPECT_EQ(host().frames().alive(), 0);
    EXPECT_EQ(host().frames().created(), 1);
}

TEST_F(FailedFrame, DoesNotAffectOtherPendingFrames) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    AsyncClip& async = openAsync(clip);
    async.announce(timeOf(1), yuy3());
    async.announce(timeOf(99), yuy3());
    async.announce(timeOf(2), yuy3());
    EXPECT_EQ(async.collect(timeOf(99), yuy3()).result, aiUnknownError);
    EXPECT_EQ(async.collect(timeOf(2), yuy3()).result, aiNoError);
    EXPECT_EQ(async.collect(timeOf(1), yuy3()).result, aiNoError);
    EXPECT_EQ(logged("REQUEST: ERROR: Frame not found: 1, frameTime: 10160640000"), 0);
}

}  // namespace
