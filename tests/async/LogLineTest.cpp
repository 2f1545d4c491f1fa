// Every line of the log, in order for each thread.
#include "async/support/AsyncTest.h"

namespace {

constexpr char kRule[] = "----------------------";
constexpr char kStarting[] =
    "Starting decompression: YUV 4:2:2 8 [Rec.709] [LIMITED] -> YUYV [Rec.709] (pr: PrPixelFormat_YUYV_422_8u_709 "
    "[yuy3]) [flipped]";

class LogLines : public AsyncTest {
protected:
    void SetUp() override {
        AsyncTest::SetUp();
        m_clip = &openClip(smallVideo(6));
    }

    hostkit::ClipSession& clip() { return *m_clip; }

private:
    hostkit::ClipSession* m_clip = nullptr;
};

TEST_F(LogLines, OfTheCreation) {
    EXPECT_EQ(messagesOf([&] { openAsync(clip()); }),
              (Lines{kRule,
                     "[imCreateAsyncImporter] (46)",
                     "QuorvaneImporter::QuorvaneImporter()",
                     "QuorvaneAsyncImporter::QuorvaneAsyncImporter()",
                     "Open: '<folder>/clip0.avi', stream: 0",
                     "VideoInfo::VideoInfo()",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere PPix Creator Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 6, n: 'Premiere PPix Cache Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere PPix Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere Time Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 2, n: 'Premiere Image Processing Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere Audio Suite', ptr: <pointer>",
                     "Compressed format info: 32 x 16, YUV 4:2:2 8 (104), Rec.709 (2), range: 1",
                     "Decode formats:",
                     "    PrPixelFormat_YUYV_422_8u_601 [yuy2]",
                     "    PrPixelFormat_YUYV_422_8u_709 [yuy3]",
                     "    PrPixelFormat_UYVY_422_8u_601 [uyvy]",
                     "    PrPixelFormat_UYVY_422_8u_709 [uyv7]",
                     "AudioInfo::AudioInfo()",
                     "Avi has no audio stream",
                     "AudioInfo::~AudioInfo()",
                     "    [imNoErr] (0)"}));
}

TEST_F(LogLines, OfAnAnnouncedAndCollectedFrame) {
    AsyncClip& async = openAsync(clip());
    const LoggedLines lines = linesOf([&] {
        async.announce(timeOf(1), only(PrPixelFormat_YUYV_422_8u_709, 32, 16));
        async.collect(timeOf(1), yuy3());
    });
    EXPECT_EQ(lines.caller, (Lines{kRule, "[OnInitiateAsyncRead]", "REQUEST: Adding: 1, frameTime: 10160640000",
                                   "    OnInitiateAsyncRead: [aiNoError] (0)",
                                   kRule, "[OnGetFrame]", "REQUEST: Requesting: 1, frameTime: 10160640000",
                                   "Decoded 1: PrPixelFormat_YUYV_422_8u_709",
                                   "    OnGetFrame: [aiNoError] (0), [imNoErr] (0)"}));
    EXPECT_EQ(lines.others, (std::vector<Lines>{{"inFrameTime: 10160640000", "frameIndex:  1 (total: 6)",
                                                 "inNumFrameFormats: 1",
                                                 "inFrameFormats[0]: 32 16 PrPixelFormat_YUYV_422_8u_709 [yuy3]",
                                                 kStarting}}));
}

TEST_F(LogLines, OfAFrameThatWasNeverAnnounced) {
    AsyncClip& async = openAsync(clip());
    const LoggedLines lines = linesOf([&] { async.collect(timeOf(2), yuy3()); });
    EXPECT_EQ(lines.caller, (Lines{kRule, "[OnGetFrame]", "REQUEST: Requesting: 2, frameTime: 20321280000",
                                   "REQUEST: ERROR: Frame not found: 2, frameTime: 20321280000",
                                   "Decoded 2: PrPixelFormat_YUYV_422_8u_709",
                                   "    OnGetFrame: [aiNoError] (0), [imNoErr] (0)"}));
    EXPECT_EQ(lines.others, (std::vector<Lines>{{"inFrameTime: 20321280000", "frameIndex:  2 (total: 6)",
                                                 "inNumFrameFormats: 1",
                                                 "inFrameFormats[0]: 0 0 PrPixelFormat_YUYV_422_8u_709 [yuy3]",
                                                 kStarting}}));
}

TEST_F(LogLines, OfASecondFrameInTheSameSession) {
    AsyncClip& async = openAsync(clip());
    async.collect(timeOf(2), yuy3());
    const LoggedLines lines = linesOf([&] { async.collect(timeOf(3), yuy3()); });
    EXPECT_EQ(lines.others, (std::vector<Lines>{{"inFrameTime: 30481920000", "frameIndex:  3 (total: 6)",
                                                 "inNumFrameFormats: 1",
                                                 "inFrameFormats[0]: 0 0 PrPixelFormat_YUYV_422_8u_709 [yuy3]"}}));
}

TEST_F(LogLines, OfAFrameInAnotherPixelFormat) {
    AsyncClip& async = openAsync(clip());
    async.collect(timeOf(2), uyv7());
    const LoggedLines lines = linesOf([&] { async.collect(timeOf(3), yuy3()); });
    EXPECT_EQ(lines.others, (std::vector<Lines>{{"inFrameTime: 30481920000", "frameIndex:  3 (total: 6)",
                                                 "inNumFrameFormats: 1",
                                                 "inFrameFormats[0]: 0 0 PrPixelFormat_YUYV_422_8u_709 [yuy3]",
                                                 "Pixel format changed, ending decompression",
                                                 "Starting decompression: UYVY [Rec.709] [LIMITED] -> YUYV [Rec.709] "
                                                 "(pr: PrPixelFormat_YUYV_422_8u_709 [yuy3]) [flipped]"}}));
}

TEST_F(LogLines, OfADroppedFrame) {
    aviwriter::SampleOptions options = smallVideo(6);
    options.dropped = {3, 4};
    AsyncClip& async = openAsync(options);
    async.collect(timeOf(0), yuy3());
    const LoggedLines lines = linesOf([&] { EXPECT_EQ(async.collect(timeOf(4), yuy3()).result, aiNoError); });
    EXPECT_EQ(lines.others, (std::vector<Lines>{{"inFrameTime: 40642560000", "frameIndex:  4 (total: 6)",
                                                 "inNumFrameFormats: 1",
                                                 "inFrameFormats[0]: 0 0 PrPixelFormat_YUYV_422_8u_709 [yuy3]",
                                                 "Empty frame: 4, frame read: 2"}}));
}

TEST_F(LogLines, OfAFrameThatFails) {
    AsyncClip& async = openAsync(clip());
    const LoggedLines lines = linesOf([&] { async.collect(timeOf(6), yuy3()); });
    EXPECT_EQ(lines.caller, (Lines{kRule, "[OnGetFrame]", "REQUEST: Requesting: 6, frameTime: 60963840000",
                                   "REQUEST: ERROR: Frame not found: 6, frameTime: 60963840000",
                                   "    OnGetFrame: [aiUnknownError] (2), [imFrameNotFound] (28)"}));
    EXPECT_EQ(lines.others, (std::vector<Lines>{{"inFrameTime: 60963840000", "frameIndex:  6 (total: 6)",
                                                 "frameIndex out of bounds"}}));
}

TEST_F(LogLines, OfSeveralFramesAreOnAThreadEach) {
    AsyncClip& async = openAsync(clip());
    async.collect(timeOf(5), yuy3());
    const LoggedLines lines = linesOf([&] {
        // All tasks run until the first decode is released, so that their threads differ.
        holdHostCall(hostkit::HostCall::CreatePPix);
        for (const int frame : {0, 1, 2}) {
            async.announce(timeOf(frame), yuy3());
            EXPECT_TRUE(waitUntilLogged("frameIndex:  " + std::to_string(frame) + " (total: 6)"));
        }
        gate().open();
        async.flush();
    });
    const auto task = [](const std::string& time, const std::string& index) {
        return Lines{"inFrameTime: " + time, "frameIndex:  " + index + " (total: 6)", "inNumFrameFormats: 1",
                     "inFrameFormats[0]: 0 0 PrPixelFormat_YUYV_422_8u_709 [yuy3]"};
    };
    EXPECT_EQ(lines.others, (std::vector<Lines>{task("0", "0"), task("10160640000", "1"), task("20321280000", "2")}));
}

TEST_F(LogLines, OfAFlush) {
    AsyncClip& async = openAsync(clip());
    EXPECT_EQ(messagesOf([&] { async.flush(); }),
              (Lines{kRule, "[OnFlush]", "    OnFlush: [aiNoError] (0)"}));
}

TEST_F(LogLines, OfTheClose) {
    AsyncClip& async = openAsync(clip());
    EXPECT_EQ(messagesOf([&] { async.close(); }),
              (Lines{"QuorvaneAsyncImporter::~QuorvaneAsyncImporter()",
                     "QuorvaneImporter::~QuorvaneImporter()",
                     "VideoInfo::~VideoInfo()",
                     "Releasing suite: r: 0, v: 1, n: 'Premiere Audio Suite'",
                     "Releasing suite: r: 0, v: 2, n: 'Premiere Image Processing Suite'",
                     "Releasing suite: r: 0, v: 1, n: 'Premiere Time Suite'",
                     "Releasing suite: r: 0, v: 1, n: 'Premiere PPix Suite'",
                     "Releasing suite: r: 0, v: 6, n: 'Premiere PPix Cache Suite'",
                     "Releasing suite: r: 0, v: 1, n: 'Premiere PPix Creator Suite'"}));
}

}  // namespace
