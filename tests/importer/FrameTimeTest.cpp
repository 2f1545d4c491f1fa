// From a frame request's time and size to the frame: everything that is decided before a byte is read.
#include "importer/support/ImporterTest.h"

#include <limits>

using hostkit::ClipSession;

namespace {

constexpr PrTime kLowest = std::numeric_limits<PrTime>::min();
constexpr PrTime kHighest = std::numeric_limits<PrTime>::max();

class FrameTime : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> clipOf(const VideoSketch& video, std::uint32_t frames = 5) {
        return openClip("clip.avi", aviFile({shortVideo(frames, video)}));
    }

    // The number of the frame delivered for a time, or -1 if there is none. Any other failure fails the test.
    static int frameAt(ClipSession& clip, PrTime time) {
        const auto answer = clip.frame(time, {frameFormat(PrPixelFormat_VUYX_4444_8u)});
        EXPECT_TRUE(answer.result == 0 || answer.result == 28) << answer.result;
        return answer.result == 0 ? firstBytes(answer).at(0) - kFirstFrameValue : -1;
    }
};

// A host with 1000 ticks per second.
class CoarseFrameTime : public FrameTime {
protected:
    hostkit::HostProfile profile() const override { return hostkit::hostProfile("coarse-ticks"); }
};

class FrameTimeWithoutTicks : public FrameTime {
protected:
    hostkit::HostProfile profile() const override {
        hostkit::HostProfile silent;
        silent.ticksPerSecond = 0;
        return silent;
    }
};

}  // namespace

// --- Time to frame ------------------------------------------------------------------------------------------------

TEST_F(CoarseFrameTime, TruncatesTheTicksOfAFrameAndTheFrameNumber) {
    auto clip = clipOf({.rate = 30});
    EXPECT_EQ(frameAt(*clip, 0), 0);
    EXPECT_EQ(frameAt(*clip, 32), 0);
    EXPECT_EQ(frameAt(*clip, 33), 1);
    EXPECT_EQ(frameAt(*clip, 65), 1);
    EXPECT_EQ(frameAt(*clip, 66), 2);
    EXPECT_EQ(frameAt(*clip, 98), 2);
    EXPECT_EQ(frameAt(*clip, 99), 3);
}

TEST_F(CoarseFrameTime, TreatsTimesJustBeforeTheStartAsTheFirstFrame) {
    auto clip = clipOf({.rate = 30});
    for (PrTime time = -32; time < 0; ++time) {
        EXPECT_EQ(frameAt(*clip, time), 0) << time;
    }
}

TEST_F(CoarseFrameTime, FindsNoFrameAFullFrameBeforeTheStart) {
    auto clip = clipOf({.rate = 30});
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(frameAt(*clip, -33), -1); }),
              (Lines{"outFrame: <pointer>", "inFrameTime: -33", "frameIndex:  4294967295 (total: 5)",
                     "frameIndex out of bounds"}));
}

TEST_F(CoarseFrameTime, KeepsTheLowBitsOfAHugeFrameNumber) {
    auto clip = clipOf({.rate = 30});
    EXPECT_EQ(frameAt(*clip, 33 * (PrTime{1} << 32)), 0);
    EXPECT_EQ(frameAt(*clip, 33 * ((PrTime{1} << 32) + 2)), 2);
}

TEST_F(CoarseFrameTime, FindsNoFrameAtTheFarEndsOfTime) {
    auto clip = clipOf({.rate = 30});
    // The low 32 bits of both quotients are huge numbers.
    EXPECT_EQ(frameAt(*clip, kHighest), -1);
    EXPECT_EQ(frameAt(*clip, kLowest), -1);
}

TEST_F(FrameTime, FindsTheLastFrameAndNoneAfterIt) {
    auto clip = clipOf({.rate = 25});
    EXPECT_EQ(frameAt(*clip, 10160640000 * 5 - 1), 4);
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(frameAt(*clip, 10160640000 * 5), -1); }),
              (Lines{"outFrame: <pointer>", "inFrameTime: 50803200000", "frameIndex:  5 (total: 5)",
                     "frameIndex out of bounds"}));
}

TEST_F(FrameTime, IsExactForRatesThatDivideTheTicks) {
    struct Rate { std::uint32_t rate, scale; PrTime ticks; };
    for (const Rate& row : {Rate{24000, 1001, 10594584000}, Rate{24, 1, 10584000000}, Rate{25, 1, 10160640000},
                            Rate{30000, 1001, 8475667200}, Rate{30, 1, 8467200000}, Rate{50, 1, 5080320000},
                            Rate{60000, 1001, 4237833600}, Rate{60, 1, 4233600000}}) {
        auto clip = clipOf({.rate = row.rate, .scale = row.scale});
        EXPECT_EQ(frameAt(*clip, row.ticks * 3), 3) << row.rate;
        EXPECT_EQ(frameAt(*clip, row.ticks * 3 - 1), 2) << row.rate;
    }
}

TEST_F(FrameTime, TruncatesTheTicksOfARateThatDoesNotDivideThem) {
    auto clip = clipOf({.rate = 11});
    // 254016000000 / 11 is 23092363636 and 4/11.
    EXPECT_EQ(frameAt(*clip, PrTime{23092363636} * 4), 4);
    EXPECT_EQ(frameAt(*clip, PrTime{23092363636} * 4 - 1), 3);
}

TEST_F(FrameTime, AssumesARateOf30IfTheStreamStatesNone) {
    auto clip = clipOf({.rate = 0});
    EXPECT_EQ(frameAt(*clip, 8467200000 * 2), 2);
}

// --- Unrealistic rates --------------------------------------------------------------------------------------------

TEST_F(FrameTime, CountsTheFewTicksOfTheHighestRate) {
    auto clip = clipOf({.rate = 0x7FFFFFFF});
    // 254016000000 / 2147483647 is 118 and a fraction.
    EXPECT_EQ(frameAt(*clip, 118 * 4 - 1), 3);
    EXPECT_EQ(frameAt(*clip, 118 * 4), 4);
}

TEST_F(CoarseFrameTime, FindsNoFrameWhenAFrameTakesLessThanATick) {
    auto clip = clipOf({.rate = 1001});
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(frameAt(*clip, 0), -1); }),
              (Lines{"outFrame: <pointer>", "inFrameTime: 0", "frameIndex:  4294967295 (total: 5)",
                     "frameIndex out of bounds"}));
    EXPECT_EQ(frameAt(*clip, kLowest), -1);
}

TEST_F(FrameTimeWithoutTicks, FindsNoFrame) {
    auto clip = clipOf({});
    EXPECT_EQ(frameAt(*clip, 0), -1);
    EXPECT_EQ(frameAt(*clip, kLowest), -1);
}

TEST_F(FrameTime, RunsBackwardsForANegativeRate) {
    auto clip = clipOf({.rate = 0xFFFFFFE7});   // -25
    EXPECT_EQ(frameAt(*clip, 0), 0);
    EXPECT_EQ(frameAt(*clip, 10160640000), -1);
    EXPECT_EQ(frameAt(*clip, -10160640000), 1);
}

TEST_F(FrameTime, RunsBackwardsForANegativeScale) {
    auto clip = clipOf({.rate = 25, .scale = 0xFFFFFFFF});
    EXPECT_EQ(frameAt(*clip, -10160640000 * 2), 2);
}

TEST_F(CoarseFrameTime, FindsNoFrameForTheLowestTimeOverMinusOneTick) {
    auto clip = clipOf({.rate = 1000, .scale = 0xFFFFFFFF});
    EXPECT_EQ(frameAt(*clip, kLowest), -1);
    EXPECT_EQ(frameAt(*clip, -3), 3);
}

TEST_F(FrameTime, FindsNoFrameIfTheTicksOfAFrameOverflow) {
    for (const std::uint32_t scale : {0x7FFFFFFFu, 0x80000000u, 0x80000001u}) {
        auto clip = clipOf({.rate = 1, .scale = scale});
        EXPECT_EQ(frameAt(*clip, 0), -1) << scale;
    }
}

TEST_F(FrameTime, IsExactForARealRateWhoseTicksOverflow) {
    struct Rate { std::uint32_t rate, scale; PrTime ticks; };
    // A scale of 36,310,201 is the highest whose ticks fit.
    for (const Rate& row : {Rate{1000000000, 40000000, 10160640000}, Rate{2000000000, 80000000, 10160640000},
                            Rate{36310202, 36310202, 254016000000}, Rate{720000000, 60060000, 21189168000}}) {
        auto clip = clipOf({.rate = row.rate, .scale = row.scale});
        EXPECT_EQ(frameAt(*clip, row.ticks * 3), 3) << row.rate;
        EXPECT_EQ(frameAt(*clip, row.ticks * 3 - 1), 2) << row.rate;
        EXPECT_EQ(frameAt(*clip, -row.ticks), -1) << row.rate;
    }
}

TEST_F(FrameTime, RunsBackwardsForANegativeRateWhoseTicksOverflow) {
    auto clip = clipOf({.rate = 1000000000, .scale = 0xFD9DA600});   // -40,000,000
    EXPECT_EQ(frameAt(*clip, -10160640000 * 2), 2);
}

TEST_F(FrameTime, CountsSecondsIfRateAndScaleAreTheLowest) {
    auto clip = clipOf({.rate = 0x80000000, .scale = 0x80000000});
    EXPECT_EQ(frameAt(*clip, 254016000000 * 2), 2);
}

TEST_F(FrameTime, FindsTheFirstFrameIfItLastsAYear) {
    auto clip = clipOf({.rate = 1, .scale = 31536000});
    EXPECT_EQ(frameAt(*clip, 254016000000), 0);
}

TEST_F(FrameTime, FindsNoFrameOfAStreamWithoutFrames) {
    EXPECT_EQ(frameAt(*clipOf({}, 0), 0), -1);
}

// --- The frame formats --------------------------------------------------------------------------------------------

TEST_F(FrameTime, LogsAllFormatsAndDecodesIntoTheFirst) {
    auto clip = clipOf({});
    hostkit::FrameAnswer answer;
    const Lines lines = handlerLogOf([&] {
        answer = clip->frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u, 8, 4),
                                 frameFormat(PrPixelFormat_BGRA_4444_8u, 99, 98), frameFormat(PrPixelFormat_Any),
                                 frameFormat(static_cast<PrPixelFormat>(0x04030201))});
    });
    EXPECT_EQ(answer.result, 0);
    ASSERT_TRUE(answer.frame.view());
    EXPECT_EQ(answer.frame.view()->format, PrPixelFormat_VUYX_4444_8u);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 8),
              (Lines{"outFrame: <pointer>", "inFrameTime: 0", "frameIndex:  0 (total: 5)", "inNumFrameFormats: 4",
                     "inFrameFormats[0]: 8 4 PrPixelFormat_VUYX_4444_8u [vuyx]",
                     "inFrameFormats[1]: 99 98 PrPixelFormat_BGRA_4444_8u [bgra]",
                     "inFrameFormats[2]: 0 0 PrPixelFormat_Any [[0][0][0][0]]",
                     "inFrameFormats[3]: 0 0 ???? [[1][2][3][4]]"}));
}

TEST_F(FrameTime, NeedsAFormat) {
    auto clip = clipOf({});
    const Lines lines = logOf([&] { EXPECT_EQ(clip->frame(0, {}).result, 5); });
    EXPECT_EQ(lines,
              (Lines{"----------------------", "[imGetSourceVideo] (47)", "m_filePathUtf8: '<folder>/clip.avi'",
                     "m_streamIndex:  0", "outFrame: <pointer>", "inFrameTime: 0", "frameIndex:  0 (total: 5)",
                     "inNumFrameFormats: 0", "ERROR: frameFormats is empty", "    [imOtherErr] (5)"}));
}

TEST_F(FrameTime, TreatsACountWithoutAListAsNoFormats) {
    auto clip = clipOf({});
    std::vector<imFrameFormat> none;
    PPixHand frame = nullptr;
    auto record = clip->frameRecord(0, none, &frame);
    record->inNumFrameFormats = 3;
    EXPECT_EQ(session().exchange(imGetSourceVideo, std::move(record), nullptr).result, 5);
}

TEST_F(FrameTime, TreatsANegativeCountAsNoFormats) {
    auto clip = clipOf({});
    std::vector<imFrameFormat> formats = {frameFormat(PrPixelFormat_VUYX_4444_8u)};
    PPixHand frame = nullptr;
    auto record = clip->frameRecord(0, formats, &frame);
    record->inNumFrameFormats = -1;
    EXPECT_EQ(session().exchange(imGetSourceVideo, std::move(record), nullptr).result, 5);
}

TEST_F(FrameTime, ChecksTheTimeBeforeTheFormats) {
    EXPECT_EQ(clipOf({})->frame(kHighest, {}).result, 28);
}

TEST_F(FrameTime, DeliversTheVideosSizeIfTheHostAcceptsAny) {
    auto clip = clipOf({.width = 12, .height = 6});
    for (const imFrameFormat& format :
         {frameFormat(PrPixelFormat_VUYX_4444_8u, 0, 0), frameFormat(PrPixelFormat_VUYX_4444_8u, 12, 0),
          frameFormat(PrPixelFormat_VUYX_4444_8u, 0, 6), frameFormat(PrPixelFormat_VUYX_4444_8u, 12, 6)}) {
        const auto answer = clip->frame(0, {format});
        ASSERT_TRUE(answer.frame.view());
        EXPECT_EQ(answer.frame.view()->width(), 12);
        EXPECT_EQ(answer.frame.view()->height(), 6);
    }
}

TEST_F(FrameTime, LeavesTheHostsFormatsUnchanged) {
    auto clip = clipOf({});
    std::vector<imFrameFormat> formats = {frameFormat(PrPixelFormat_VUYX_4444_8u)};
    PPixHand frame = nullptr;
    EXPECT_EQ(session().exchange(imGetSourceVideo, clip->frameRecord(0, formats, &frame), nullptr).result, 0);
    const hostkit::HostFrame owned(frame);
    EXPECT_EQ(formats[0].inFrameWidth, 0);
    EXPECT_EQ(formats[0].inFrameHeight, 0);
}

TEST_F(FrameTime, WritesNothingIntoTheRequest) {
    auto clip = clipOf({});
    std::vector<imFrameFormat> formats = {frameFormat(PrPixelFormat_VUYX_4444_8u)};
    PPixHand frame = nullptr;
    const auto answer = session().exchange(imGetSourceVideo, clip->frameRecord(0, formats, &frame), nullptr);
    const hostkit::HostFrame owned(frame);
    EXPECT_EQ(hostkit::describe(answer.written), "nothing");
    EXPECT_NE(frame, nullptr);
}

TEST_F(FrameTime, RefusesAnotherSize) {
    auto clip = clipOf({});
    EXPECT_EQ(handlerLogOf([&] {
                  EXPECT_EQ(clip->frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u, 16, 4)}).result, 5);
              }).back(),
              "ERROR: frame size mismatch (16, 4) != (8, 4)");
    EXPECT_EQ(handlerLogOf([&] {
                  EXPECT_EQ(clip->frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u, 0, -4)}).result, 5);
              }).back(),
              "ERROR: frame size mismatch (8, -4) != (8, 4)");
}

TEST_F(FrameTime, RefusesAnUnlistedPixelFormat) {
    auto clip = clipOf({});
    const Lines lines = logOf([&] { EXPECT_EQ(clip->frame(0, {frameFormat(PrPixelFormat_Invalid)}).result, 99); });
    EXPECT_EQ(lines.back(),
              "FATAL: Unhandled exception during [imGetSourceVideo] (47): GetFormatInfo_by_pixelFormat(): pixel format "
              "not found: PrPixelFormat_Invalid [badf]");
    EXPECT_EQ(host().frames().created(), 0);
}
