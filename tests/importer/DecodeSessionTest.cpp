// The decode session: opened once for all frames in one pixel format, and again for another.
#include "importer/support/ImporterTest.h"

using hostkit::ClipSession;

namespace {

struct DecodeCalls {
    std::uint32_t begins = 0;
    std::uint32_t frames = 0;
    std::uint32_t ends = 0;

    bool operator==(const DecodeCalls&) const = default;
};

std::ostream& operator<<(std::ostream& out, const DecodeCalls& calls) {
    return out << calls.begins << " begun, " << calls.frames << " frames, " << calls.ends << " ended";
}

class DecodeSession : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> clipOf(std::uint32_t type) {
        const bool isRgb = type == 101;
        auto clip = openClip("clip.avi", aviFile({shortVideo(
                                             3, {.type = type, .colorSpace = 2u, .range = isRgb ? 2u : 1u})}));
        standin().reset();
        return clip;
    }

    void decode(ClipSession& clip, int number, PrPixelFormat format) {
        EXPECT_EQ(clip.frame(10160640000 * number, {frameFormat(format)}).result, 0);
    }

    DecodeCalls calls() const {
        return {standin().calls(kStandinDecompressBegin), standin().calls(kStandinDecompress),
                standin().calls(kStandinDecompressEnd)};
    }

    // The decoder's line is the last one of a successful frame.
    std::string lastLineOf(ClipSession& clip, PrPixelFormat format) {
        return handlerLogOf([&] { decode(clip, 0, format); }).back();
    }
};

}  // namespace

TEST_F(DecodeSession, IsSharedByFramesOfOnePixelFormat) {
    auto clip = clipOf(101);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    decode(*clip, 2, PrPixelFormat_BGRA_4444_8u);
    EXPECT_EQ(calls(), (DecodeCalls{1, 2, 0}));
}

TEST_F(DecodeSession, IsEndedAndBegunAgainForAnotherPixelFormat) {
    auto clip = clipOf(101);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    decode(*clip, 1, PrPixelFormat_BGRA_4444_8u);
    decode(*clip, 2, PrPixelFormat_YUYV_422_8u_601);
    EXPECT_EQ(calls(), (DecodeCalls{2, 3, 1}));
}

TEST_F(DecodeSession, NeedsOnlyDecompressForAFurtherFrame) {
    auto clip = clipOf(101);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    standin().reset();
    decode(*clip, 1, PrPixelFormat_BGRA_4444_8u);
    std::uint32_t all = 0;
    for (const std::uint32_t count : standin().counters().calls) {
        all += count;
    }
    EXPECT_EQ(all, 1u);
}

TEST_F(DecodeSession, LogsItsBegin) {
    auto clip = clipOf(101);
    EXPECT_EQ(lastLineOf(*clip, PrPixelFormat_BGRA_4444_8u),
              "Starting decompression: RGB 8 [Rec.709] [FULL] -> BGRA [Rec.709] (pr: PrPixelFormat_BGRA_4444_8u "
              "[bgra]) [flipped]");
}

TEST_F(DecodeSession, LogsTheRangeTo32768ForSixteenBits) {
    auto clip = clipOf(101);
    EXPECT_EQ(lastLineOf(*clip, PrPixelFormat_BGRX_4444_16u),
              "Starting decompression: RGB 8 [Rec.709] [FULL] -> BGRX16 [Rec.709] (pr: PrPixelFormat_BGRX_4444_16u "
              "[Bgrx]) [flipped] [0-32768]");
}

TEST_F(DecodeSession, LogsThatTheStreamIsLimited) {
    auto clip = clipOf(104);
    EXPECT_EQ(lastLineOf(*clip, PrPixelFormat_UYVY_422_8u_601),
              "Starting decompression: YUV 4:2:2 8 [Rec.709] [LIMITED] -> UYVY [Rec.601] (pr: "
              "PrPixelFormat_UYVY_422_8u_601 [uyvy]) [flipped]");
}

TEST_F(DecodeSession, LogsNothingWhileItContinues) {
    auto clip = clipOf(101);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    EXPECT_EQ(handlerLogOf([&] { decode(*clip, 1, PrPixelFormat_BGRA_4444_8u); }),
              (Lines{"outFrame: <pointer>", "inFrameTime: 10160640000", "frameIndex:  1 (total: 3)",
                     "inNumFrameFormats: 1", "inFrameFormats[0]: 0 0 PrPixelFormat_BGRA_4444_8u [bgra]"}));
}

TEST_F(DecodeSession, LogsAChangeOfThePixelFormat) {
    auto clip = clipOf(101);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    const Lines lines = handlerLogOf([&] { decode(*clip, 0, PrPixelFormat_YUYV_422_8u_709); });
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[5], "Pixel format changed, ending decompression");
    EXPECT_EQ(lines[6],
              "Starting decompression: BGRA [Rec.709] [FULL] -> YUYV [Rec.709] (pr: PrPixelFormat_YUYV_422_8u_709 "
              "[yuy3]) [flipped]");
}

TEST_F(DecodeSession, BeginsAgainFromTheLastOnesOutput) {
    auto clip = clipOf(104);
    decode(*clip, 0, PrPixelFormat_YUYV_422_8u_601);
    EXPECT_EQ(lastLineOf(*clip, PrPixelFormat_YUYV_422_8u_709),
              "Starting decompression: YUYV [Rec.601] [LIMITED] -> YUYV [Rec.709] (pr: "
              "PrPixelFormat_YUYV_422_8u_709 [yuy3]) [flipped]");
}

TEST_F(DecodeSession, OutlivesQuietAndReopen) {
    auto clip = clipOf(101);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    clip->quiet();
    clip->open();
    decode(*clip, 1, PrPixelFormat_BGRA_4444_8u);
    EXPECT_EQ(calls(), (DecodeCalls{1, 2, 0}));
}

TEST_F(DecodeSession, IsNotEndedBeforeItsInstanceIsClosed) {
    auto clip = clipOf(101);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    clip->close();
    EXPECT_EQ(calls(), (DecodeCalls{1, 1, 0}));
    EXPECT_EQ(standin().counters().closesWithSession, 1u);
}

TEST_F(DecodeSession, BelongsToOneClip) {
    auto first = clipOf(101);
    auto second = openClip("second.avi", aviFile({shortVideo()}));
    standin().reset();
    decode(*first, 0, PrPixelFormat_BGRA_4444_8u);
    decode(*second, 0, PrPixelFormat_VUYX_4444_8u);
    decode(*first, 1, PrPixelFormat_BGRA_4444_8u);
    EXPECT_EQ(calls(), (DecodeCalls{2, 3, 0}));
    EXPECT_EQ(standin().counters().runningSessions, 2u);
}

TEST_F(DecodeSession, DeliversAFrameThatTheHostOwns) {
    auto clip = clipOf(101);
    host().calls().keepLines(true);
    decode(*clip, 0, PrPixelFormat_BGRA_4444_8u);
    EXPECT_EQ(host().calls().lines(),
              (Lines{"PPixCreator.CreatePPix(access 1, bgra, 0 0 8 4)", "PPix.GetPixels(access 1)",
                     "PPix.GetRowBytes()"}));
    EXPECT_EQ(host().frames().created(), 1);
}
