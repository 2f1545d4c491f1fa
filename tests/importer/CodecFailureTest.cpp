// A failing codec library, and a host that provides no frame buffer.
#include "importer/support/ImporterTest.h"

using hostkit::ClipSession;
using hostkit::HostCall;

namespace {

constexpr std::uint32_t kQueriesOfTable = 17;       // one for each decode format, after the describing one

class CodecFailure : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> closedInfoClip(const VideoSketch& video = {}) {
        auto clip = std::make_unique<ClipSession>(session(), write("clip.avi", aviFile({shortVideo(3, video)})));
        EXPECT_EQ(clip->open().result, 0);
        standin().reset();
        return clip;
    }

    std::unique_ptr<ClipSession> clip(const VideoSketch& video = {}) {
        auto opened = closedInfoClip(video);
        EXPECT_EQ(opened->info(0).result, 0);
        standin().reset();
        return opened;
    }

    hostkit::FrameAnswer frame(ClipSession& clip, PrPixelFormat format = PrPixelFormat_VUYX_4444_8u) {
        return clip.frame(0, {frameFormat(format)});
    }

    // The log of a request after its formats.
    Lines decoderLog(ClipSession& clip, csSDK_int32 expectedResult) {
        const Lines lines = handlerLogOf([&] { EXPECT_EQ(frame(clip).result, expectedResult); });
        return {lines.begin() + 5, lines.end()};
    }

    // Expects describing the stream to return `result`; returns the lines of the log after the suites'.
    Lines describingLog(ClipSession& clip, csSDK_int32 result) {
        Lines lines = handlerLogOf([&] { EXPECT_EQ(clip.info(0).result, result); });
        std::erase_if(lines, [](const std::string& line) { return line.starts_with("Acquiring suite: "); });
        return {lines.begin() + 1, lines.end()};
    }

    void expectNoInstanceOpen() {
        EXPECT_EQ(standin().counters().openInstances, 0u);
        EXPECT_EQ(standin().counters().outstandingInits, 0u);
    }
};

constexpr char kStarting[] =
    "Starting decompression: YUV 4:4:4 8 [Rec.601] [LIMITED] -> VUYX [Rec.601] (pr: PrPixelFormat_VUYX_4444_8u "
    "[vuyx]) [flipped]";

class CodecFailureWithoutTime : public CodecFailure {
protected:
    hostkit::HostProfile profile() const override {
        hostkit::HostProfile timeless;
        timeless.refusedSuites = {{kPrSDKTimeSuite, hostkit::kEveryVersion}};
        return timeless;
    }
};

}  // namespace

// --- Describing the stream ----------------------------------------------------------------------------------------

TEST_F(CodecFailure, OfTheDescribingQueryMakesABadFile) {
    auto opened = closedInfoClip();
    standin().fail(kStandinDecompressQuery, 1, 1, 5);
    EXPECT_EQ(describingLog(*opened, 2),
              (Lines{"VideoInfo::VideoInfo()",
                     "Decompress query failed: Quorvane error (5): unknown error: decompressQuery({28 bytes}, null)",
                     "VideoInfo::~VideoInfo()"}));
}

TEST_F(CodecFailure, IsPrintedWithItsSign) {
    auto opened = closedInfoClip();
    standin().fail(kStandinDecompressQuery, 1, 1, 0xFFFFFFFF);
    EXPECT_EQ(describingLog(*opened, 2).at(1),
              "Decompress query failed: Quorvane error (-1): unknown error: decompressQuery({28 bytes}, null)");
}

TEST_F(CodecFailure, CarriesTheLibrarysOwnText) {
    auto opened = closedInfoClip({.extraData = Bytes(4)});
    EXPECT_EQ(describingLog(*opened, 2).at(1),
              "Decompress query failed: Quorvane error (-2147467007): the compressed format has the wrong size: "
              "decompressQuery({4 bytes}, null)");
}

TEST_F(CodecFailure, OfTheSecondDescribingQueryMakesABadFileToo) {
    auto opened = closedInfoClip();
    standin().fail(kStandinDecompressQuery, 2 + kQueriesOfTable, 1, 6);
    EXPECT_EQ(describingLog(*opened, 2),
              (Lines{"VideoInfo::VideoInfo()",
                     "Compressed format info: 8 x 4, YUV 4:4:4 8 (103), Rec.601 (1), range: 1",
                     "Decompress query failed: Quorvane error (6): unknown error: decompressQuery({28 bytes}, null)",
                     "VideoInfo::~VideoInfo()"}));
    expectNoInstanceOpen();
}

TEST_F(CodecFailure, OfAllDecodeFormatsMakesABadFile) {
    auto opened = closedInfoClip();
    standin().fail(kStandinDecompressQuery, 2, kQueriesOfTable, 7);
    EXPECT_EQ(describingLog(*opened, 2),
              (Lines{"VideoInfo::VideoInfo()",
                     "Compressed format info: 8 x 4, YUV 4:4:4 8 (103), Rec.601 (1), range: 1", "Decode formats:",
                     "No formats to decode into: decodeFormats is empty", "VideoInfo::~VideoInfo()"}));
    expectNoInstanceOpen();
}

TEST_F(CodecFailure, OfOneDecodeFormatExcludesIt) {
    auto opened = closedInfoClip();
    standin().fail(kStandinDecompressQuery, 2 + 6, 1, 7);           // vuyx is the table's seventh format
    EXPECT_EQ(opened->info(0).result, 0);
    EXPECT_EQ(opened->pixelFormats(), (std::vector<PrPixelFormat>{PrPixelFormat_VUYX_4444_8u_709}));
}

TEST_F(CodecFailure, OfAllPreferredFormatsOffersAllOthers) {
    auto opened = closedInfoClip();
    standin().fail(kStandinDecompressQuery, 2 + 6, 2, 7);           // vuyx and vux7
    EXPECT_EQ(opened->info(0).result, 0);
    EXPECT_EQ(opened->pixelFormats(),
              (std::vector<PrPixelFormat>{
                  PrPixelFormat_YUYV_422_8u_601, PrPixelFormat_YUYV_422_8u_709, PrPixelFormat_UYVY_422_8u_601,
                  PrPixelFormat_UYVY_422_8u_709, PrPixelFormat_VUYA_4444_8u, PrPixelFormat_VUYA_4444_8u_709,
                  PrPixelFormat_BGRA_4444_8u, PrPixelFormat_ARGB_4444_8u, PrPixelFormat_BGRX_4444_8u,
                  PrPixelFormat_XRGB_4444_8u, PrPixelFormat_V210_422_10u_601, PrPixelFormat_V210_422_10u_709,
                  PrPixelFormat_RGB_444_10u, PrPixelFormat_BGRA_4444_16u, PrPixelFormat_BGRX_4444_16u}));
}

TEST_F(CodecFailure, ToOpenAnInstanceClosesNothing) {
    auto opened = closedInfoClip();
    standin().fail(kStandinOpen, 1, 1, 9);
    EXPECT_EQ(opened->info(0).result, 2);
    EXPECT_EQ(standin().calls(kStandinClose), 0u);
    expectNoInstanceOpen();
}

TEST_F(CodecFailure, RemovesTheDescription) {
    auto opened = clip();
    standin().fail(kStandinDecompressQuery, 1, 1, 5);
    EXPECT_EQ(opened->info(0).result, 2);
    EXPECT_EQ(opened->pixelFormat(0).result, 99);
    expectNoInstanceOpen();
}

TEST_F(CodecFailure, EndsWhenTheHostAsksAgain) {
    auto opened = closedInfoClip();
    standin().fail(kStandinDecompressQuery, 1, 1, 5);
    EXPECT_EQ(opened->info(0).result, 2);
    EXPECT_EQ(opened->info(0).result, 0);
    EXPECT_EQ(opened->pixelFormats().size(), 2u);
}

TEST_F(CodecFailure, DoesNotOccurWithoutExtraData) {
    auto opened = closedInfoClip({.extraData = Bytes{}});
    EXPECT_EQ(describingLog(*opened, 2),
              (Lines{"VideoInfo::VideoInfo()", "Compressed format size is invalid", "VideoInfo::~VideoInfo()"}));
    EXPECT_EQ(standin().calls(kStandinDecompressQuery), 0u);
    expectNoInstanceOpen();
}

TEST_F(CodecFailure, DoesNotOccurWithATooShortFormat) {
    StreamSketch video = shortVideo();
    video.format.resize(39);
    ClipSession opened(session(), write("clip.avi", aviFile({video})));
    opened.open();
    EXPECT_TRUE(contains(describingLog(opened, 2), "Compressed format size is invalid"));
}

TEST_F(CodecFailureWithoutTime, LeavesNoInstanceOpenWithoutATimeSuite) {
    auto opened = closedInfoClip();
    const Lines lines = logOf([&] { EXPECT_EQ(opened->info(0).result, 99); });
    EXPECT_EQ(lines.back(),
              "FATAL: Unhandled exception during [imGetInfo8] (37): Could not acquire suite: 'Premiere Time Suite', "
              "ver: 1");
    expectNoInstanceOpen();
}

// --- Frame rates --------------------------------------------------------------------------------------------------

TEST_F(CodecFailure, OfARateOfZeroDefaultsTo30) {
    auto opened = closedInfoClip({.rate = 0, .scale = 7});
    hostkit::Answer<imFileInfoRec8> info;
    EXPECT_TRUE(contains(handlerLogOf([&] { info = opened->info(0); }), "Invalid FPS: 0/7"));
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->vidScale, 30);
    EXPECT_EQ(info->vidSampleSize, 1);
}

TEST_F(CodecFailure, OfAScaleOfZeroDefaultsTo30) {
    auto opened = closedInfoClip({.rate = 24, .scale = 0});
    hostkit::Answer<imFileInfoRec8> info;
    EXPECT_TRUE(contains(handlerLogOf([&] { info = opened->info(0); }), "Invalid FPS: 24/0"));
    EXPECT_EQ(info->vidScale, 30);
    EXPECT_EQ(info->vidSampleSize, 1);
}

TEST_F(CodecFailure, OfARateIsLoggedWithItsSign) {
    auto opened = closedInfoClip({.rate = 0, .scale = 0xFFFFFFFF});
    EXPECT_TRUE(contains(handlerLogOf([&] { opened->info(0); }), "Invalid FPS: 0/-1"));
}

// --- Decoding -----------------------------------------------------------------------------------------------------

TEST_F(CodecFailure, ToBeginReturns8) {
    auto opened = clip();
    standin().fail(kStandinDecompressBegin, 1, 1, 11);
    EXPECT_EQ(decoderLog(*opened, 8),
              (Lines{kStarting, "Decompress begin failed: Quorvane error (11): unknown error: decompressBegin({28 "
                                "bytes}, {0,0,254,1,49,1,1,1,0})"}));
    EXPECT_EQ(host().frames().created(), 0);
}

TEST_F(CodecFailure, ToBeginIsTriedAgainForTheNextFrame) {
    auto opened = clip();
    standin().fail(kStandinDecompressBegin, 1, 1, 11);
    EXPECT_EQ(frame(*opened).result, 8);
    EXPECT_EQ(frame(*opened).result, 0);
    EXPECT_EQ(standin().calls(kStandinDecompressBegin), 2u);
    EXPECT_EQ(standin().calls(kStandinDecompressEnd), 0u);
}

TEST_F(CodecFailure, ToDecompressReturns8AndDisposesTheFrame) {
    auto opened = clip();
    standin().fail(kStandinDecompress, 1, 1, 0x8000400B);
    const Lines lines = decoderLog(*opened, 8);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines[1].starts_with("Decompress failed: Quorvane error (-2147467253): out of memory: decompress("))
        << lines[1];
    EXPECT_EQ(host().frames().created(), 1);
    EXPECT_EQ(host().frames().disposed(), 1);
}

TEST_F(CodecFailure, ToDecompressKeepsTheSession) {
    auto opened = clip();
    standin().fail(kStandinDecompress, 1, 1, 12);
    EXPECT_EQ(frame(*opened).result, 8);
    EXPECT_EQ(frame(*opened).result, 0);
    EXPECT_EQ(standin().calls(kStandinDecompressBegin), 1u);
}

TEST_F(CodecFailure, OfABadFrameReturns8) {
    VideoSketch video;
    video.frames = {aviwriter::text("this is no frame of the codec, by far")};
    auto opened = openClip("clip.avi", aviFile({videoStream(video)}));
    const Lines lines = handlerLogOf([&] { EXPECT_EQ(frame(*opened).result, 8); });
    EXPECT_TRUE(lines.back().starts_with("Decompress failed: Quorvane error (")) << lines.back();
    EXPECT_NE(lines.back().find("the frame is not one of this codec: decompress({37 bytes}, {"), std::string::npos)
        << lines.back();
}

TEST_F(CodecFailure, ToEndIsLoggedAndDecodingContinues) {
    auto opened = clip();
    EXPECT_EQ(frame(*opened).result, 0);
    standin().fail(kStandinDecompressEnd, 1, 1, 13);
    const Lines lines =
        handlerLogOf([&] { EXPECT_EQ(frame(*opened, PrPixelFormat_VUYX_4444_8u_709).result, 0); });
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[5], "Pixel format changed, ending decompression");
    EXPECT_EQ(lines[6],
              "Internal error: decompressEnd() failed: Quorvane error (13): unknown error: decompressEnd()");
    EXPECT_TRUE(lines[7].starts_with("Starting decompression: ")) << lines[7];
}

// --- The host's frame buffer --------------------------------------------------------------------------------------

TEST_F(CodecFailure, OfTheHostToCreateAFrameReturns5) {
    auto opened = clip();
    host().faults().fail(HostCall::CreatePPix, -3);
    EXPECT_EQ(decoderLog(*opened, 5), (Lines{kStarting, "ERROR: CreatePPix() failed: -3"}));
    EXPECT_EQ(standin().calls(kStandinDecompress), 0u);
}

TEST_F(CodecFailure, OfTheHostToCreateAFrameAffectsOnlyThatFrame) {
    auto opened = clip();
    host().faults().fail(HostCall::CreatePPix, -3);
    EXPECT_EQ(frame(*opened).result, 5);
    EXPECT_EQ(frame(*opened).result, 0);
    EXPECT_EQ(standin().calls(kStandinDecompressBegin), 1u);
}

TEST_F(CodecFailure, OfGetPixelsReturns5AndDisposesTheFrame) {
    auto opened = clip();
    host().faults().fail(HostCall::GetPixels, -4);
    EXPECT_EQ(decoderLog(*opened, 5), (Lines{kStarting, "ERROR: GetPixels() failed: -4"}));
    EXPECT_EQ(standin().calls(kStandinDecompress), 0u);
    EXPECT_EQ(host().frames().created(), 1);
    EXPECT_EQ(host().frames().disposed(), 1);
}

TEST_F(CodecFailure, OfGetRowBytesReturns8AndDisposesTheFrame) {
    auto opened = clip();
    host().faults().fail(HostCall::GetRowBytes, -4);
    EXPECT_EQ(frame(*opened).result, 8) << "the codec refuses rows of no bytes";
    EXPECT_EQ(host().frames().disposed(), 1);
}
