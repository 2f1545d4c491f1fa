// The picture of a sound's loudness: drawing it, and the plug-in's sound in it.
#include "importhost/sound/Levels.h"

#include "importhost/Sample.h"

#include <nlohmann/json.hpp>

#include <limits>

using programs::ProgramRun;
using programs::Sample;

namespace {

TEST(Levels, APeakIsTheHighestAbsoluteSample) {
    EXPECT_EQ(importhost::peakOf({0.25f, -0.75f, 0.5f}), 0.75f);
    EXPECT_EQ(importhost::peakOf({}), 0.0f);
}

TEST(Levels, NotANumberIsSkipped) {
    EXPECT_EQ(importhost::peakOf({0.25f, std::numeric_limits<float>::quiet_NaN(), 0.125f}), 0.25f);
}

TEST(Levels, BarsAreAsHighAsTheirPeaks) {
    EXPECT_EQ(importhost::bars({0.0f, 0.001f, 0.125f, 0.126f, 0.5f, 0.99f, 1.0f}),
              " \u2581\u2581\u2582\u2584\u2588\u2588");
}

TEST(Levels, LevelsAboveFullScaleHaveTheHighestBar) {
    EXPECT_EQ(importhost::bars({7.0f, std::numeric_limits<float>::infinity()}), "\u2588\u2588");
}

TEST(Levels, AreShownInDecibels) {
    EXPECT_EQ(importhost::decibelText(1.0f), "0.0 dB");
    EXPECT_EQ(importhost::decibelText(0.5f), "-6.0 dB");
    EXPECT_EQ(importhost::decibelText(0.0f), "silence");
}

// A second and a half: each full second begins with a click at 0.875, the rest is a tone at 0.5. The 48 stretches are
// 1/32 s long, so the click of the second second is in the 33rd.
TEST(Levels, ShowTheClicksOfTheTestSound) {
    const Sample sample({"--size", "32x16", "--frames", "3", "--rate", "2", "--audio", "pcm16:2:48000:mask=0x3"});
    const auto tones = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += "\u2584";
        }
        return text;
    };
    const std::string row = "|\u2587" + tones(31) + "\u2587" + tones(15) + "| -1.2 dB\n";
    const ProgramRun run = programs::runImporthost({"info", sample.text()});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_NE(run.output.find("    levels        FrontLeft  " + row + "                  FrontRight " + row),
              std::string::npos)
        << run.output;
}

TEST(Levels, AreNumbersInJson) {
    const Sample sample({"--size", "32x16", "--frames", "3", "--rate", "2", "--audio", "pcm16:1:48000", "--audio",
                         "pcm16:2:48000"});
    const auto json = nlohmann::json::parse(programs::runImporthost({"info", "--json", sample.text()}).output);
    const auto& sound = json["files"][0]["streams"][0]["sound"];
    EXPECT_EQ(sound["peaksResult"]["name"], "imNoErr");
    ASSERT_EQ(sound["peaks"].size(), 1u);
    ASSERT_EQ(sound["peaks"][0].size(), 48u);
    EXPECT_EQ(sound["peaks"][0][0], 0.875);
    EXPECT_NEAR(sound["peaks"][0][1].get<double>(), 0.5, 0.001);
    EXPECT_EQ(sound["peaks"][0][32], 0.875);
    EXPECT_EQ(json["files"][0]["streams"][1]["sound"]["peaks"].size(), 2u);
}

TEST(Levels, CoverTheSoundToItsEnd) {
    const fakes::FakeClip clip("sound=1");
    const auto json = nlohmann::json::parse(
        programs::withFake({"info", "--json", hostkit::toUtf8(clip.path())}).output);
    EXPECT_EQ(json["files"][0]["streams"][0]["sound"]["peaks"][0][47], 95999.0);
}

}  // namespace
