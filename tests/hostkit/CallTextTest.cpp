#include "hostkit/sessions/CallText.h"

#include "FakeClip.h"
#include "hostkit/sessions/AsyncSession.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace hostkit {
namespace {

TEST(CallText, HasTheSelectorAndTheIndex) {
    EXPECT_EQ(callText(imGetIndFormat, asPointer(3), nullptr), "imGetIndFormat(3)");
    EXPECT_EQ(callText(imShutdown, nullptr, nullptr), "imShutdown()");
}

TEST(CallText, UnknownSelectorsAreNumbers) {
    EXPECT_EQ(callText(-7, nullptr, nullptr), "selector -7()");
    EXPECT_EQ(asyncCallText(99, nullptr), "selector 99()");
}

TEST(CallText, AnOpenHasItsPathAndWhetherItIsTheFirst) {
    const std::u16string path = u"C:\\clips\\\u00FCber.avi";
    imFileOpenRec8 record = {};
    record.fileinfo.filepath = path.c_str();
    record.inStreamIdx = 2;
    EXPECT_EQ(callText(imOpenFile8, nullptr, &record), "imOpenFile8('C:\\clips\\\u00FCber.avi', stream 2)");
    int object = 0;
    record.privatedata = &object;
    EXPECT_EQ(callText(imOpenFile8, nullptr, &record), "imOpenFile8('C:\\clips\\\u00FCber.avi', stream 2, again)");
}

TEST(CallText, AFrameHasItsTimeAndFirstFourFormats) {
    std::vector<imFrameFormat> formats(5, imFrameFormat{720, 480, PrPixelFormat_BGRA_4444_8u});
    formats[1] = {0, 0, 0};
    imSourceVideoRec record = {};
    record.inFrameTime = 254016000000;
    record.inFrameFormats = formats.data();
    record.inNumFrameFormats = 2;
    EXPECT_EQ(callText(imGetSourceVideo, nullptr, &record),
              "imGetSourceVideo(time 254016000000, 720 x 480 bgra, 0 x 0 any)");
    record.inNumFrameFormats = 5;
    EXPECT_EQ(asyncCallText(aiGetFrame, &record),
              "aiGetFrame(time 254016000000, 720 x 480 bgra, 0 x 0 any, 720 x 480 bgra, 720 x 480 bgra, ...)");
}

TEST(CallText, SoundHasItsPositionAndSize) {
    imImportAudioRec7 record = {};
    record.position = -1;
    record.size = 800;
    EXPECT_EQ(callText(imImportAudio7, nullptr, &record), "imImportAudio7(position -1, 800 sample frames)");
}

TEST(CallText, SurvivesAMissingRecord) {
    for (const csSDK_int32 selector : {imOpenFile8, imGetInfo8, imGetSourceVideo, imImportAudio7, imAnalysis}) {
        EXPECT_EQ(callText(selector, nullptr, nullptr).back(), ')');
    }
    EXPECT_EQ(asyncCallText(aiInitiateAsyncRead, nullptr), "aiInitiateAsyncRead()");
}

// A line is written before its call begins: after a crash the last line is the call that crashed.
TEST(CallLog, PassesLinesOfBothDirectionsInOrder) {
    Host host;
    std::vector<std::string> lines;
    host.calls().sendLines([&lines](const std::string& line) { lines.push_back(line); });
    PluginLibrary library(fakes::importerPath());
    ImporterSession session(host, library.entry());
    session.init();
    session.shutdown();
    host.calls().sendLines(nullptr);
    session.supports8();
    ASSERT_GE(lines.size(), 4U);
    EXPECT_EQ(lines.front(), "imInit()");
    EXPECT_EQ(lines[lines.size() - 2], "imShutdown()");
    EXPECT_EQ(lines.back(), "  = imNoErr (0)");
    EXPECT_TRUE(host.calls().lines().empty());
}

}  // namespace
}  // namespace hostkit
