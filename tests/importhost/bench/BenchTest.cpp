// importhost bench: what it measures, prints and refuses. No speed is promised.
#include "importer/support/TestHome.h"
#include "importhost/RunLog.h"
#include "importhost/Sample.h"

#include "hostkit/plugin/PluginLog.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

using programs::contains;
using programs::runImporthost;
using programs::ProgramRun;
using programs::Sample;
using programs::withFake;

namespace {

using Json = nlohmann::json;

// The lines up to the first two blanks, without a row's numbers.
std::vector<std::string> rowNames(const std::string& output) {
    std::vector<std::string> names;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.size() > 2 && line.substr(0, 2) == "  ") {
            names.push_back(line.substr(2, line.find("  ", 2) - 2));
        }
    }
    return names;
}

class Bench : public testing::Test {
protected:
    // A clip of 20 frames with two streams of sound, and by default a host that is not busy.
    ProgramRun bench(std::vector<std::string> options) const {
        if (std::find(options.begin(), options.end(), "--busy") == options.end()) {
            options.insert(options.begin(), {"--busy", "0"});
        }
        options.insert(options.begin(), {"bench", m_sample.text()});
        return runImporthost(options);
    }
    Json benchJson(std::vector<std::string> options) const {
        const auto path = m_sample.beside("bench.json");
        options.insert(options.end(), {"--json", hostkit::toUtf8(path)});
        const ProgramRun run = bench(options);
        EXPECT_EQ(run.exitCode, 0) << run.errors << run.output;
        return Json::parse(std::ifstream(path, std::ios::binary));
    }
    Json fileJson(std::vector<std::string> options) const { return benchJson(std::move(options))["files"][0]; }

    const Sample m_sample{{"--type", "2Y8Q", "--size", "32x16", "--frames", "20", "--audio", "pcm16:2:48000", "--audio",
                           "pcm24:6:44100"}};
};

std::vector<Json> valuesOf(const Json& rows, const char* key) {
    std::vector<Json> values;
    for (const Json& row : rows) {
        values.push_back(row.at(key));
    }
    return values;
}

TEST_F(Bench, ShowsEveryRow) {
    const ProgramRun run = bench({"--seed", "1"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    const std::vector<std::string> names = rowNames(run.output);
    for (const char* name :
         {"open and describe", "first frame", "linear", "reverse", "random", "none ahead", "1 ahead", "2 ahead",
          "4 ahead", "8 ahead", "16 ahead", "stream 0, 2 channels", "stream 1, 6 channels", "kept by the open clip",
          "kept after all frames", "peak of the program"}) {
        EXPECT_EQ(std::count(names.begin(), names.end(), name), 1) << name << "\n" << run.output;
    }
}

TEST_F(Bench, SaysWhatItMeasured) {
    const ProgramRun run = bench({"--seed", "5"});
    EXPECT_TRUE(contains(run.output, "at most 200 frames a row, seed 5, the host works 0 ms a frame, the log is off"))
        << run.output;
    EXPECT_TRUE(contains(run.output, "32 x 16, 25.000 fps (25/1), 20 frames, 2Y8Q as yuy2\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "measured: every frame\n")) << run.output;
}

TEST_F(Bench, SaysThatALongClipIsSampled) {
    const ProgramRun run = bench({"--frames", "10"});
    EXPECT_TRUE(contains(run.output, "measured: a sample: 8 of 20 frames in 8 runs spread over the clip, 10 at random"))
        << run.output;
}

TEST_F(Bench, MeasuresEachFrameOfAShortClip) {
    const Json file = fileJson({});
    EXPECT_EQ(file["frameCount"], 20);
    EXPECT_EQ(valuesOf(file["frames"], "name"), (std::vector<Json>{"linear", "reverse", "random"}));
    EXPECT_EQ(valuesOf(file["frames"], "count"), (std::vector<Json>{20, 20, 20}));
    EXPECT_EQ(valuesOf(file["ahead"], "ahead"), (std::vector<Json>{0, 1, 2, 4, 8, 16}));
    EXPECT_EQ(valuesOf(file["ahead"], "count"), (std::vector<Json>{20, 20, 20, 20, 20, 20}));
    EXPECT_EQ(valuesOf(file["ahead"], "failed"), (std::vector<Json>{0, 0, 0, 0, 0, 0}));
}

TEST_F(Bench, MeasuresAtMostTheGivenFrames) {
    const Json file = fileJson({"--frames", "9"});
    EXPECT_EQ(valuesOf(file["frames"], "count"), (std::vector<Json>{8, 8, 9}));
    EXPECT_EQ(valuesOf(file["ahead"], "count"), (std::vector<Json>{8, 8, 8, 8, 8, 8}));
}

TEST_F(Bench, CountsAReadForEachFrame) {
    const Json file = fileJson({});
    EXPECT_EQ(valuesOf(file["frames"], "reads"), (std::vector<Json>{20, 20, 20}));
    EXPECT_EQ(valuesOf(file["ahead"], "reads"), (std::vector<Json>{20, 20, 20, 20, 20, 20}));
    EXPECT_EQ(file["opening"][1]["reads"], 1);
    EXPECT_EQ(file["frames"][0]["bytesRead"], file["frames"][2]["bytesRead"]);
    EXPECT_GT(file["frames"][0]["bytesRead"], 20);
}

TEST_F(Bench, OpensOnceColdAndThenFiveTimes) {
    const Json opening = fileJson({})["opening"];
    EXPECT_EQ(valuesOf(opening, "name"), (std::vector<Json>{"open and describe", "first frame"}));
    EXPECT_EQ(valuesOf(opening, "count"), (std::vector<Json>{5, 5}));
    EXPECT_GT(opening[0]["firstMs"], 0.0);
    EXPECT_GT(opening[1]["firstMs"], 0.0);
}

TEST_F(Bench, MeasuresTheSoundOfEveryStream) {
    const Json sound = fileJson({})["sound"];
    EXPECT_EQ(valuesOf(sound, "stream"), (std::vector<Json>{0, 1}));
    EXPECT_EQ(valuesOf(sound, "channels"), (std::vector<Json>{2, 6}));
    EXPECT_EQ(valuesOf(sound, "measuredSampleFrames"), (std::vector<Json>{38400, 35280}));
    EXPECT_EQ(valuesOf(sound, "count"), (std::vector<Json>{10, 9}));
    EXPECT_EQ(valuesOf(sound, "bytesRead"), (std::vector<Json>{38400 * 2 * 2, 35280 * 6 * 3}));
}

TEST_F(Bench, JsonHoldsTimesInTheirOrder) {
    const Json file = fileJson({});
    for (const char* table : {"frames", "ahead", "sound"}) {
        for (const Json& row : file[table]) {
            EXPECT_LE(row["medianMs"], row["p95Ms"]) << row;
            EXPECT_LE(row["p95Ms"], row["worstMs"]) << row;
            EXPECT_LE(row["worstMs"], row["totalMs"]) << row;
            EXPECT_GT(row["totalMs"], 0.0) << row;
        }
    }
    EXPECT_GT(file["memory"]["programPeakBytes"], 0);
    EXPECT_GE(file["hostBufferMs"], 0.0);
}

TEST_F(Bench, JsonHasTheOptions) {
    const Json json = benchJson({"--seed", "11", "--profile", "tight-rows"});
    EXPECT_EQ(json["seed"], 11);
    EXPECT_EQ(json["busyMs"], 0);
    EXPECT_EQ(json["framesAtMost"], 200);
    EXPECT_EQ(json["profile"], "tight-rows");
    EXPECT_EQ(json["log"], false);
    EXPECT_EQ(json["problems"], Json::array());
}

TEST_F(Bench, AnOldHostGetsNoAsynchronousFrames) {
    const Json file = fileJson({"--profile", "no-async"});
    EXPECT_EQ(valuesOf(file["ahead"], "ahead"), std::vector<Json>{0});
    EXPECT_EQ(file["noAhead"], "the host 'no-async' does not know asynchronous frames");
}

// The highest number of frames that were announced and not collected, for each stretch until none was.
std::vector<int> highestPending(const std::string& log) {
    std::vector<int> peaks;
    int pending = 0;
    int peak = 0;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        pending += contains(line, "REQUEST: Adding:") ? 1 : 0;
        peak = std::max(peak, pending);
        if (contains(line, "REQUEST: Requesting:") && --pending == 0) {
            peaks.push_back(std::exchange(peak, 0));
        }
    }
    peaks.erase(std::unique(peaks.begin(), peaks.end()), peaks.end());
    return peaks;
}

TEST_F(Bench, AnnouncesAsManyFramesAsItSays) {
    useTestHome();
    const ProgramRun run = bench({"--log"});
    EXPECT_TRUE(contains(run.output, "the log is on\n")) << run.output;
    EXPECT_EQ(highestPending(programs::logOf(run)), (std::vector<int>{1, 2, 4, 8, 16}));
}

TEST_F(Bench, TheUsersLogIsOffDuringTheRun) {
    useTestHome();
    const hostkit::LogSwitch usersOwn(true);
    const hostkit::PluginLog log;
    EXPECT_EQ(bench({"--frames", "1"}).exitCode, 0);
    EXPECT_EQ(log.newFiles(), std::vector<std::filesystem::path>{});
    EXPECT_TRUE(hostkit::LogSwitch::isOn());
}

// A lower bound, which no machine is too slow for.
TEST_F(Bench, RowsIncludeTheBusyHostsTime) {
    const Json file = fileJson({"--frames", "2", "--busy", "30"});
    EXPECT_GE(file["ahead"][0]["seconds"], 0.06);
    EXPECT_GE(file["ahead"][5]["seconds"], 0.06);
}

TEST_F(Bench, AFileThatDoesNotOpenFailsAlone) {
    const auto path = m_sample.beside("bench.json");
    const ProgramRun run = runImporthost({"bench", "missing.avi", m_sample.text(), "--busy", "0", "--json",
                                       hostkit::toUtf8(path)});
    EXPECT_EQ(run.exitCode, 1);
    const std::string failure = "'missing.avi' cannot be opened: imBadFile (2): there is no such file.";
    EXPECT_TRUE(contains(run.output, "  failed: " + failure + "\n")) << run.output;
    const Json files = Json::parse(std::ifstream(path, std::ios::binary))["files"];
    EXPECT_EQ(files[0]["failures"], (Json{failure}));
    EXPECT_FALSE(files[0].contains("frames"));
    EXPECT_EQ(files[1]["frames"].size(), 3u);
}

TEST_F(Bench, JsonDoesNotOverwriteAClip) {
    const auto size = std::filesystem::file_size(m_sample.path());
    const ProgramRun run = bench({"--json", m_sample.text()});
    expectErrors(run, 2, {"is named twice: it would be overwritten."});
    EXPECT_EQ(std::filesystem::file_size(m_sample.path()), size);
}

TEST_F(Bench, OptionsOutOfRangeAreUsageErrors) {
    EXPECT_EQ(bench({"--frames", "0"}).exitCode, 2);
    EXPECT_EQ(bench({"--frames", "x"}).exitCode, 2);
    EXPECT_EQ(bench({"--busy", "-1"}).exitCode, 2);
    EXPECT_EQ(bench({"--busy", "1001"}).exitCode, 2);
    EXPECT_EQ(bench({"--seed", "-3"}).exitCode, 2);
    EXPECT_EQ(bench({"--wrong"}).exitCode, 2);
}

TEST(BenchRefusals, NoFileIsAUsageError) { EXPECT_EQ(runImporthost({"bench"}).exitCode, 2); }

TEST(BenchRefusals, AMissingPluginLeavesNoReport) {
    const fakes::FakeClip clip;
    const auto path = clip.path().parent_path() / "bench.json";
    const ProgramRun run =
        runImporthost({"bench", "x.avi", "--plugin", "missing.prm", "--json", hostkit::toUtf8(path)});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(BenchRefusals, AClipWithoutSoundIsMeasuredWithoutIt) {
    const Sample sample({"--size", "32x16", "--frames", "3"});
    const ProgramRun run = runImporthost({"bench", sample.text(), "--busy", "0"});
    expectOutput(run, 0, {"\n  no sound was measured\n"});
}

TEST(BenchRefusals, AFileOfSoundAloneFailsAsInTheEditor) {
    const Sample sample({"--no-video", "--audio", "pcm16:2:48000"});
    const ProgramRun run = runImporthost({"bench", sample.text()});
    expectOutput(run, 1, {"' cannot be described: imBadFile (2): "});
}

TEST(BenchRefusals, AFileOtherThanAviFails) {
    const fakes::TemporaryFile file(u8"text.avi", "no pictures in here");
    const ProgramRun run = runImporthost({"bench", hostkit::toUtf8(file.path())});
    expectOutput(run, 1, {"' cannot be described: imBadFile (2): "});
}

TEST(BenchRefusals, FailedFramesArePrintedOnceForEachRow) {
    const fakes::FakeClip clip("missing-frames frames=4");
    const ProgramRun run = withFake({"bench", hostkit::toUtf8(clip.path()), "--busy", "0"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "  failed: Frame 0 failed (first frame): imFrameNotFound (28).\n"
                                     "  failed: Frame 0 failed (linear): imFrameNotFound (28).\n"
                                     "  failed: Frame 3 failed (reverse): imFrameNotFound (28).\n"))
        << run.output;
}

TEST(BenchRefusals, APluginMayOfferNoAsynchronousFrames) {
    const fakes::FakeClip clip;
    const ProgramRun run = withFake({"bench", hostkit::toUtf8(clip.path()), "--busy", "0"});
    EXPECT_EQ(run.exitCode, 0) << run.output << run.errors;
    EXPECT_TRUE(contains(run.output, "\n  none were fetched ahead: the plug-in does not offer asynchronous frames for "
                                     "this clip\n"))
        << run.output;
}

TEST(BenchRefusals, WhatThePluginLeaksFailsTheRun) {
    const fakes::FakeClip clip("leak-suite");
    const ProgramRun run = withFake({"bench", hostkit::toUtf8(clip.path()), "--busy", "0"});
    expectErrors(run, 1, {"importhost: The suite 'Premiere PPix Creator Suite' version 1 was acquired"});
}

}  // namespace
