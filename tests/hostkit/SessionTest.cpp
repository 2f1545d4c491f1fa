#include "FakeClip.h"

#include "hostkit/system/Text.h"

#include <optional>

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

class Session : public testing::Test {
protected:
    explicit Session(const char* profile = "editor-11") : host(hostProfile(profile)) {}

    // Opens a clip with these words.
    ClipSession& open(const std::string& words = "") {
        clipFile.emplace(words);
        openClip.emplace(session, clipFile->path());
        EXPECT_EQ(openClip->open().result, 0);
        return *openClip;
    }

    Host host;
    PluginLibrary library{fakes::importerPath()};
    ImporterSession session{host, library.entry()};
    std::optional<fakes::FakeClip> clipFile;
    std::optional<ClipSession> openClip;
};

class SessionOf23 : public Session {
protected:
    SessionOf23() : Session("editor-14") {}
};

TEST_F(Session, StartAsksForFormatsUntilOneFails) {
    const StartAnswer start = session.start();
    EXPECT_EQ(start.init.result, 0);
    EXPECT_EQ(start.init->priority, 200);
    EXPECT_EQ(start.init.written, (std::vector<ByteRange>{{52, 1}, {72, 1}}));
    EXPECT_EQ(start.supports8, 101);
    ASSERT_EQ(start.formats.size(), 2u);
    EXPECT_STREQ(start.formats[0]->FormatName, "Fake clip");
    EXPECT_EQ(start.formats[1].result, 301);
    EXPECT_EQ(session.shutdown(), 0);
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST_F(Session, SubtypesAreCountedByTheirBlockAndFreed) {
    const SubTypesAnswer answer = session.subTypeNames(1);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.blockBytes, 2 * 516);
    ASSERT_EQ(answer.records.size(), 2u);
    EXPECT_EQ(fieldText(answer.records[1].subTypeName, 256), u"B");
    EXPECT_EQ(host.memory().aliveBlocks(), 0u);
}

TEST_F(Session, AnUnknownSelectorReturnsThePluginsAnswer) { EXPECT_EQ(session.call(999), 3); }

TEST_F(Session, ARefusedFileHasNoPrivateData) {
    const fakes::TemporaryFile file(u8"other.txt", "other");
    ClipSession clip(session, file.path());
    EXPECT_EQ(clip.open().result, 2);
    EXPECT_EQ(clip.privateData(), nullptr);
}

TEST_F(Session, AnyPathReachesThePlugin) {
    const fakes::TemporaryFile file(u8"\u20ac \U0001F3AC.fake", "fake");
    ClipSession clip(session, file.path());
    EXPECT_EQ(clip.open().result, 0);
}

TEST_F(Session, StreamsAreAskedForWhileTheAnswerIs18) {
    ClipSession& clip = open("sound=3");
    const auto infos = clip.infos();
    ASSERT_EQ(infos.size(), 3u);
    EXPECT_EQ(infos[0].result, 18);
    EXPECT_EQ(infos[1].result, 18);
    EXPECT_EQ(infos[2].result, 19);
    EXPECT_EQ(valueOf(infos[0]->vidInfo.imageWidth), 8);
    EXPECT_EQ(infos[2]->hasVideo, 0);
    EXPECT_EQ(infos[2]->hasAudio, 1);
}

TEST_F(SessionOf23, FileInfoRecordsAreLonger) {
    ClipSession& clip = open();
    EXPECT_EQ(clip.info(0).record.size(), 5376u);
    EXPECT_EQ(host.violations(), Sentences{});
}

TEST_F(Session, PixelFormatsComeInThePluginsOrder) {
    ClipSession& clip = open("formats=v210,Bgra,bgra");
    EXPECT_EQ(clip.pixelFormats(),
              (std::vector<PrPixelFormat>{PrPixelFormat_V210_422_10u_601, PrPixelFormat_BGRA_4444_16u,
                                          PrPixelFormat_BGRA_4444_8u}));
}

TEST_F(Session, LabelsThatThePluginLeavesKeepTheirFill) {
    ClipSession& clip = open();
    const LayoutAnswer layout = clip.channelLayout(-5);
    EXPECT_EQ(layout.result, 0);
    EXPECT_EQ(layout.labels[0], 100);
    EXPECT_EQ(layout.labels[1], 101);
    EXPECT_EQ(layout.labels[2], -5);
    EXPECT_EQ(layout.labels[31], -5);
}

TEST_F(Session, TheAnalysisTextEndsWithItsBuffer) {
    ClipSession& clip = open();
    EXPECT_EQ(clip.analysis().text, "\nVideo stream:\nFake pictures\n");
    EXPECT_EQ(clip.analysis(8).text, "\nVideo ");
}

TEST_F(Session, TheDataRateIsAskedForTwice) {
    ClipSession& clip = open("frames=3 scale=30000 size=1001");
    const DataRateAnswer rate = clip.dataRate();
    EXPECT_EQ(rate.sizeCall->buffersize, 24);
    ASSERT_EQ(rate.samples.size(), 3u);
    EXPECT_EQ(rate.samples[0].sampledur, 0x800003E9u);
    EXPECT_EQ(rate.samples[2].samplesize, 300u);
}

TEST_F(Session, AFrameIsTheHostsUntilItIsDestroyed) {
    ClipSession& clip = open();
    {
        const FrameAnswer answer = clip.frame(254016000000 / 25 * 7, {{0, 0, PrPixelFormat_BGRA_4444_8u}});
        ASSERT_EQ(answer.result, 0);
        const FrameView view = answer.frame.view().value();
        EXPECT_EQ(view.width(), 8);
        EXPECT_EQ(view.rowBytes, 128);
        EXPECT_EQ(view.pixels[0], 0);
        EXPECT_EQ(view.pixels[1], 80);      // the bottom row comes first
        EXPECT_EQ(view.pixels[2], 7);
        EXPECT_EQ(view.pixels[3], 255);
        EXPECT_EQ(host.frames().alive(), 1);
    }
    EXPECT_EQ(host.frames().alive(), 0);
}

TEST_F(Session, AMissingFrameHasTheRawResult) {
    ClipSession& clip = open();
    const FrameAnswer answer = clip.frame(254016000000, {{0, 0, PrPixelFormat_BGRA_4444_8u}});
    EXPECT_EQ(answer.result, 28);
    EXPECT_FALSE(answer.frame);
}

TEST_F(Session, SoundHasAListForEachChannel) {
    ClipSession& clip = open();
    const AudioAnswer sound = clip.audio(1000, 3, 2);
    EXPECT_EQ(sound.result, 0);
    EXPECT_EQ(sound.channels, (std::vector<std::vector<float>>{{1000, 1001, 1002}, {-1000, -1001, -1002}}));
}

TEST_F(Session, AQuietClipKeepsItsPrivateData) {
    ClipSession& clip = open();
    void* before = clip.privateData();
    EXPECT_EQ(clip.quiet(), 0);
    EXPECT_EQ(clip.fileRef(), imInvalidHandleValue());
    EXPECT_EQ(clip.open().result, 0);
    EXPECT_EQ(clip.privateData(), before);
    EXPECT_NE(clip.fileRef(), imInvalidHandleValue());
}

TEST_F(Session, AClipIsClosedOnce) {
    open();
    EXPECT_EQ(host.suitesHeld(), 3);
    EXPECT_EQ(openClip->close(), 0);
    openClip.reset();
    EXPECT_EQ(host.problems(), Sentences{});
}

imFileInfoRec8 streamOf(csSDK_int32 scale, csSDK_int32 size, csSDK_int32 frames) {
    imFileInfoRec8 info = {};
    info.vidScale = scale;
    info.vidSampleSize = size;
    info.vidDuration = size * frames;
    return info;
}

TEST(FrameTimes, AreExactForRatesThatDivideTheTicks) {
    EXPECT_EQ(timeOfFrame(streamOf(30000, 1001, 10), 1, 254016000000), 8475667200);
    EXPECT_EQ(timeOfFrame(streamOf(30000, 1001, 10), 2000000, 254016000000), 16951334400000000);
}

TEST(FrameTimes, AreRoundedDownForOthers) {
    EXPECT_EQ(timeOfFrame(streamOf(11, 1, 10), 1, 254016000000), 23092363636);
    EXPECT_EQ(timeOfFrame(streamOf(11, 1, 10), 5, 254016000000), 115461818181);
}

TEST(FrameTimes, StayWithin64BitsForHugeScales) {
    EXPECT_EQ(timeOfFrame(streamOf(2000000000, 1999999999, 1), 1, 254016000000), 254015999872);
}

TEST(FrameTimes, AreAtMostTheHighestTime) {
    EXPECT_EQ(timeOfFrame(streamOf(1, 36310200, 1), 1, 254016000000), 9223371763200000000);
    EXPECT_EQ(timeOfFrame(streamOf(1, 36310201, 1), 1, 254016000000), 9223372036854775807);
    EXPECT_EQ(timeOfFrame(streamOf(1, 2000000000, 1), 1, 254016000000), 9223372036854775807);
}

TEST(FrameTimes, AreZeroWithoutARate) { EXPECT_EQ(timeOfFrame(streamOf(0, 1, 10), 5, 254016000000), 0); }

TEST(FrameTimes, TheDurationGivesTheFrameCount) { EXPECT_EQ(frameCount(streamOf(30000, 1001, 100)), 100); }

}  // namespace
