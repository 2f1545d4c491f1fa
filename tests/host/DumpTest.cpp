// The dump of pixel formats and codec capabilities that imInit writes into the log.
#include "HostFixture.h"

#include <algorithm>

using hostkit::HostCall;

namespace {

constexpr csSDK_uint32 kSomeFailure = 0x80001234;
constexpr const char* kPixelFormatHeading = "Pixel formats ([fcc] : isCompressed hasAlpha isTopLeft - name):";

class Dump : public testing::Test {
protected:
    ~Dump() override { standin_reset(); }

    // The lines of the section with this heading.
    static Lines section(const Lines& messages, const std::string& heading) {
        const auto begin = std::find(messages.begin(), messages.end(), heading);
        const auto end = std::find(begin, messages.end(), "----");
        return begin == messages.end() ? Lines{} : Lines(begin + 1, end);
    }

    static Lines codecTypes(const Lines& messages) {
        return section(messages, "Quorvane types (can_flip supports_0_32768_range : format):");
    }
};

TEST_F(Dump, IsWrittenCompletely) {
    PluginRun run;
    EXPECT_EQ(run.session().init().result, imNoErr);
    const Lines messages = run.messages();
    ASSERT_GT(messages.size(), 2u);
    expectSameLines(Lines(messages.begin() + 2, messages.end()), goldenLines("imInit.txt"));
}

TEST_F(Dump, AsksForARowOf128PixelsOfEachFormat) {
    const Lines expected = section(goldenLines("imInit.txt"), kPixelFormatHeading);
    const int formats = static_cast<int>(expected.size());
    ASSERT_GE(formats, 72);
    PluginRun run;
    run.session().init();
    EXPECT_EQ(run.host().calls().count(HostCall::FormatIsCompressed), formats);
    EXPECT_EQ(run.host().calls().count(HostCall::FormatHasAlpha), formats);
    EXPECT_EQ(run.host().calls().count(HostCall::FormatIsOriginTopLeft), formats);
    EXPECT_EQ(run.host().calls().count(HostCall::GetSizeForPixelBuffer), formats);
}

TEST_F(Dump, AsksForEachFormatsFlagsInOrder) {
    PluginRun run;
    run.host().calls().keepLines(true);
    run.session().init();
    const Lines calls = run.host().calls().lines();
    const auto first = std::find(calls.begin(), calls.end(), "ImageProcessing.FormatIsCompressed(bgra)");
    ASSERT_GE(calls.end() - first, 4);
    expectSameLines(Lines(first, first + 4),
                    {"ImageProcessing.FormatIsCompressed(bgra)", "ImageProcessing.FormatHasAlpha(bgra)",
                     "ImageProcessing.FormatIsOriginTopLeft(bgra)", "ImageProcessing.GetSizeForPixelBuffer(bgra)"});
}

TEST_F(Dump, ShowsAQuestionMarkAndTheCodeForAFlagThatFailed) {
    PluginRun run;
    run.host().faults().fail(HostCall::FormatHasAlpha, -2);
    run.session().init();
    EXPECT_EQ(section(run.messages(), kPixelFormatHeading).at(0),
              "[bgra] :   ?   -  PrPixelFormat_BGRA_4444_8u (err: 0 fffffffe 0) - 512");
}

TEST_F(Dump, ShowsTheCodeOfASuccessThatIsNotZero) {
    PluginRun run;
    run.host().faults().fail(HostCall::FormatIsCompressed, 0x20000);
    run.session().init();
    EXPECT_EQ(section(run.messages(), kPixelFormatHeading).at(0),
              "[bgra] :   1   -  PrPixelFormat_BGRA_4444_8u (err: 20000 0 0) - 512");
}

TEST_F(Dump, ReadsNoForATypeThatTheCodecRefuses) {
    PluginRun run;
    standin_fail(kStandinGetParam, 1, 1, kSomeFailure);   // "can flip" of type 1
    run.session().init();
    const Lines types = codecTypes(run.messages());
    ASSERT_EQ(types.size(), 50u);
    EXPECT_EQ(types[0], " NO  NO : BGRX");
    EXPECT_EQ(types[1], "YES  NO : BGRA");
}

TEST_F(Dump, ReadsNoThroughoutIfTheCodecRefusesEverything) {
    PluginRun run;
    standin_fail(kStandinGetParam, 1, 100, kSomeFailure);
    EXPECT_EQ(run.session().init().result, imNoErr);
    const Lines types = codecTypes(run.messages());
    ASSERT_EQ(types.size(), 50u);
    for (const std::string& line : types) {
        EXPECT_TRUE(line.starts_with(" NO  NO : ")) << line;
    }
}

TEST_F(Dump, SurvivesACodecThatCannotBeOpened) {
    PluginRun run;
    standin_fail(kStandinOpen, 1, 1, kSomeFailure);
    EXPECT_EQ(run.session().init().result, imNoErr);
    EXPECT_EQ(codecTypes(run.messages()).size(), 50u);
    expectCodecAtRest();
}

TEST_F(Dump, AsksTheCodecTwiceForEachTypeAndClosesIt) {
    PluginRun run;
    standin_reset();
    run.session().init();
    const StandinCounters counters = codecCounters();
    EXPECT_EQ(counters.calls[kStandinGetParam], 100u);
    EXPECT_EQ(counters.calls[kStandinOpen], 1u);
    EXPECT_EQ(counters.calls[kStandinClose], 1u);
    expectCodecAtRest();
}

TEST_F(Dump, AsksForNoHostFormatsWhileTheLogIsOff) {
    PluginRun run({}, false);
    EXPECT_EQ(run.session().init().result, imNoErr);
    EXPECT_EQ(run.host().calls().count(HostCall::FormatIsCompressed), 0);
    EXPECT_EQ(run.host().calls().count(HostCall::FormatHasAlpha), 0);
    EXPECT_EQ(run.host().calls().count(HostCall::FormatIsOriginTopLeft), 0);
    EXPECT_EQ(run.host().calls().count(HostCall::GetSizeForPixelBuffer), 0);
}

TEST_F(Dump, AcquiresItsSuitesEvenWhileTheLogIsOff) {
    PluginRun run({}, false);
    run.session().init();
    EXPECT_EQ(run.host().suites().at({"Premiere Image Processing Suite", 2}).acquired, 2);
    EXPECT_EQ(run.host().suites().at({"Premiere Image Processing Suite", 2}).released, 2);
}

TEST_F(Dump, CallsNoCodecFunctionWhileTheLogIsOff) {
    PluginRun run({}, false);
    standin_reset();
    run.session().init();
    const StandinCounters counters = codecCounters();
    for (std::uint32_t function = 0; function < kStandinFunctionCount; ++function) {
        EXPECT_EQ(counters.calls[function], 0u) << function;
    }
}

TEST_F(Dump, IsWrittenAgainByASecondInit) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    run.session().init();
    EXPECT_EQ(codecTypes(run.newMessages()).size(), 50u);
}

}  // namespace
