// The command line and the reports.
#include "avirepair/CommandLine.h"
#include "avirepair/Repaired.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

using avirepair::parseCommandLine;

TEST(RepairCommand, TakesFilesAndOptions) {
    const auto parsed = parseCommandLine({"a.avi", "-o", "b.avi", "--like", "c.avi", "--close-gaps", "--all", "--json",
                                          "--force"});
    ASSERT_TRUE(parsed.command.has_value());
    EXPECT_EQ(parsed.command->input, "a.avi");
    EXPECT_EQ(parsed.command->output, "b.avi");
    EXPECT_EQ(parsed.command->like, "c.avi");
    EXPECT_TRUE(parsed.command->options.closesGaps);
    EXPECT_TRUE(parsed.command->options.takesAll);
    EXPECT_TRUE(parsed.command->json);
    EXPECT_TRUE(parsed.command->force);
    EXPECT_FALSE(parsed.command->dryRun);
}

TEST(RepairCommand, NeedsAnOutputUnlessNothingIsWritten) {
    EXPECT_EQ(parseCommandLine({"a.avi"}).exitCode, 2);
    EXPECT_TRUE(parseCommandLine({"a.avi", "--dry-run"}).command.has_value());
    EXPECT_TRUE(parseCommandLine({"a.avi", "--list"}).command.has_value());
}

TEST(RepairCommand, OfWrongUsageExitsWith2) {
    EXPECT_EQ(parseCommandLine({}).exitCode, 2);
    EXPECT_EQ(parseCommandLine({"a.avi", "-o", "b.avi", "--frce"}).exitCode, 2);
    EXPECT_EQ(parseCommandLine({"a.avi", "b.avi", "-o", "c.avi"}).exitCode, 2);
}

TEST(RepairCommand, HelpAndVersionAreGood) {
    EXPECT_EQ(parseCommandLine({"--help"}).exitCode, 0);
    EXPECT_EQ(parseCommandLine({"--version"}).exitCode, 0);
}

Bytes clipWithHole() {
    Bytes clip = damage::honestClip();
    const std::size_t begin = aviwriter::positionOf(clip, "00dc", 3);
    aviwriter::overwrite(clip, begin, aviwriter::filled(aviwriter::positionOf(clip, "00dc", 5) - begin));
    return clip;
}

TEST(RepairReport, IsAPageOfText) {
    EXPECT_EQ(avirepair::textReport(diagnosed(clipWithHole()), {"a.avi", "b.avi"}, {}),
              "a.avi: 78282 bytes, 16 chunks found\n"
              "What was wrong:\n"
              "  15520 bytes from 23634 on hold nothing of the clip\n"
              "Lost:\n"
              "  0:00:00.120  stream 0: 2 frames, shown as the frame before\n"
              "  0:00:00.120  stream 1: 0:00:00.080 of sound, silent\n"
              "The new file:\n"
              "  0  video  QVAN 8 x 4: 10 frames, 0:00:00.400, 8 key frames, 0 dropped\n"
              "  1  sound  2 channels, 48000 Hz, 16 bits: 19200 samples, 0:00:00.400\n"
              "Written: b.avi\n");
}

TEST(RepairReport, OfAFileWithoutMediaSaysSo) {
    EXPECT_EQ(avirepair::textReport(diagnosed(aviwriter::filled(100)), {"a.avi", ""}, {}),
              "a.avi: 100 bytes, 0 chunks found\n"
              "What was wrong:\n"
              "  the main header was lost\n"
              "  there was no usable index: every frame is taken for a key frame\n"
              "Nothing could be saved: there is no media in this file.\n");
}

TEST(RepairReport, AsJsonHasTheSameFacts) {
    const auto report = nlohmann::json::parse(avirepair::jsonReport(diagnosed(clipWithHole()), {"a.avi", ""}, {}));
    EXPECT_EQ(report["input"], "a.avi");
    EXPECT_TRUE(report["output"].is_null());
    EXPECT_EQ(report["result"], "losses");
    EXPECT_EQ(report["losses"].size(), 2U);
    EXPECT_EQ(report["losses"][0]["frames"], 2);
    EXPECT_EQ(report["streams"][0]["length"], 10);
    EXPECT_EQ(report["streams"][0]["keyFrames"], 8);
    EXPECT_EQ(report["streams"][1]["length"], 19200);
}

TEST(RepairReport, WritesTimesInHours) {
    EXPECT_EQ(avirepair::timeText(0), "0:00:00.000");
    EXPECT_EQ(avirepair::timeText(3723.4567), "1:02:03.457");
}

}  // namespace
