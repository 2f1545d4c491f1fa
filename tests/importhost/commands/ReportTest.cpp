#include "importhost/reports/ClipReport.h"

#include "hostkit/sessions/Names.h"

#include <gtest/gtest.h>

using namespace importhost;

namespace {

TEST(Report, TimesAreRoundedToMilliseconds) {
    EXPECT_EQ(timeText(0.0), "0:00:00.000");
    EXPECT_EQ(timeText(59.9996), "0:01:00.000");
    EXPECT_EQ(timeText(3723.0415), "1:02:03.042");
}

TEST(Report, RatesAreShownAsNumberAndFraction) {
    imFileInfoRec8 info = {};
    info.vidScale = 30000;
    info.vidSampleSize = 1001;
    EXPECT_EQ(rateText(info), "29.970 fps (30000/1001)");
}

TEST(Report, ARateWithoutAPeriodIsZero) {
    imFileInfoRec8 info = {};
    info.vidScale = 25;
    EXPECT_EQ(rateText(info), "0.000 fps (25/0)");
}

TEST(Report, DurationIsThePicturesOrElseTheSounds) {
    imFileInfoRec8 info = {};
    info.hasAudio = 1;
    info.audInfo.sampleRate = 48000.0f;
    info.audDuration = 24000;
    EXPECT_EQ(secondsOf(info), 0.5);
    info.hasVideo = 1;
    info.vidScale = 25;
    info.vidDuration = 50;
    EXPECT_EQ(secondsOf(info), 2.0);
}

TEST(Names, CodesHaveNames) {
    EXPECT_EQ(hostkit::resultText(2), "imBadFile (2)");
    EXPECT_EQ(hostkit::resultText(77), "unknown (77)");
    EXPECT_EQ(hostkit::channelLabelName(103), "LowFrequency");
    EXPECT_EQ(hostkit::sampleTypeName(6), "32-bit float");
    EXPECT_EQ(hostkit::alphaTypeName(5), "no alpha");
    EXPECT_EQ(hostkit::fieldTypeName(9), "unknown");
}

}  // namespace
