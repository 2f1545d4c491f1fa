// The program itself, with the fake importer: exit codes, output and files.
#include "importhost/Program.h"

#include <nlohmann/json.hpp>

using programs::contains;
using programs::runImporthost;
using programs::ProgramRun;
using programs::withFake;

namespace {

std::string clipPath(const fakes::FakeClip& clip) { return hostkit::toUtf8(clip.path()); }

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

TEST(Program, HelpIsGood) {
    const ProgramRun run = runImporthost({"--help"});
    expectOutput(run, 0, {"importhost sheet clip.avi -o sheet.png"});
    EXPECT_EQ(run.errors, "");
}

TEST(Program, HelpOfACommandIsAboutThatCommand) {
    const ProgramRun run = runImporthost({"frames", "--help"});
    expectOutput(run, 0, {"--range A-B"});
    EXPECT_FALSE(contains(run.output, "First steps")) << run.output;
}

TEST(Program, EveryToolTellsItsVersion) {
    const std::string version = firstLine(runImporthost({"--version"}).output).substr(sizeof "importhost" - 1);
    EXPECT_EQ(std::count(version.begin(), version.end(), '.'), 2) << version;
    const std::pair<const char*, const char*> tools[] = {{"makeavi", MAKEAVI_FILE_NAME},
                                                         {"avidump", AVIDUMP_FILE_NAME}};
    for (const auto& [name, file] : tools) {
        const ProgramRun run = programs::run(file, {"--version"});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.output, name + version + "\n");
    }
}

TEST(Program, NoCommandIsAUsageError) { EXPECT_EQ(runImporthost({}).exitCode, 2); }

TEST(Program, AnUnknownOptionIsAUsageError) { EXPECT_EQ(runImporthost({"info", "x", "--wrong"}).exitCode, 2); }

TEST(Program, AnUnknownProfileListsTheKnownOnes) {
    const ProgramRun run = runImporthost({"info", "x", "--profile", "editor-1"});
    expectErrors(run, 2, {"editor-14"});
}

TEST(Program, AMissingPluginCannotBeLoaded) {
    const ProgramRun run = runImporthost({"info", "x", "--plugin", "missing.prm"});
    expectErrors(run, 3, {"missing.prm' cannot be loaded"});
}

TEST(Info, ShowsWhatThePluginSays) {
    const fakes::FakeClip clip("sound=2 scale=30000 size=1001 frames=300");
    const ProgramRun run = withFake({"info", clipPath(clip)});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output.substr(run.output.find("\n\n") + 2),
              clipPath(clip) + R"(
  stream 0        imIterateStreams (18)
    video         8 x 6, 29.970 fps (30000/1001), 300 frames, 0:00:10.010
                  24 bits, no alpha, progressive, pixel aspect 1:1
    subtype       A[0][0][0]  A
    sound         2 channels, 48000 Hz, 16-bit integer, 96000 sample frames
    layout        FrontLeft FrontRight
    levels        FrontLeft  |████████████████████████████████████████████████| 99.6 dB
                  FrontRight |████████████████████████████████████████████████| 99.6 dB
  stream 1        imBadStreamIndex (19)
    sound         2 channels, 48000 Hz, 16-bit integer, 96000 sample frames
    layout        FrontLeft FrontRight
    levels        FrontLeft  |████████████████████████████████████████████████| 99.6 dB
                  FrontRight |████████████████████████████████████████████████| 99.6 dB
  pixel formats   bgra  PrPixelFormat_BGRA_4444_8u
                  yuy2  PrPixelFormat_YUYV_422_8u_601
  data rate       3.61 Mbit/s, 300 frames (300 key frames), 4.31 MiB, smallest 100, largest 30000 bytes
  analysis        Video stream:
                  Fake pictures
)");
}

TEST(Info, ShowsFormatsAndSubtypesFirst) {
    const fakes::FakeClip clip;
    const ProgramRun run = withFake({"info", clipPath(clip)});
    const std::size_t start = run.output.find('\n') + 1;
    EXPECT_EQ(run.output.substr(start, run.output.find("\n\n") + 2 - start),
              "  imports         Fake clip (FAKE), .fake\n"
              "  subtypes        A[0][0][0]  A\n"
              "                  B[0][0][0]  B\n"
              "\n");
}

TEST(Info, ARefusedFileFailsAndTheOthersAreShown) {
    const fakes::FakeClip clip;
    const ProgramRun run = withFake({"info", "missing.fake", clipPath(clip)});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "missing.fake\n  open            imBadFile (2): there is no such file\n"))
        << run.output;
    EXPECT_TRUE(contains(run.output, "8 x 6")) << run.output;
}

TEST(Info, JsonHasTheSameFacts) {
    const fakes::FakeClip clip("frames=3");
    const ProgramRun run = withFake({"info", "--json", clipPath(clip)});
    EXPECT_EQ(run.exitCode, 0);
    const auto json = nlohmann::json::parse(run.output);
    EXPECT_EQ(json["formats"][0]["name"], "Fake clip");
    EXPECT_EQ(json["subTypes"].size(), 2u);
    EXPECT_EQ(json["priority"], 200);
    const auto& file = json["files"][0];
    EXPECT_EQ(file["open"]["name"], "imNoErr");
    EXPECT_EQ(file["streams"][0]["video"]["width"], 8);
    EXPECT_EQ(file["streams"][0]["video"]["frames"], 3);
    EXPECT_EQ(file["streams"][0]["sound"]["layout"], (nlohmann::json{"FrontLeft", "FrontRight"}));
    EXPECT_EQ(file["pixelFormats"][1]["code"], "yuy2");
    EXPECT_EQ(file["dataRate"]["bytes"], 600);
    EXPECT_EQ(json["problems"], nlohmann::json::array());
}

TEST(Info, JsonSaysWhyAFileIsRefused) {
    const fakes::FakeClip clip;
    const ProgramRun run = withFake({"info", "--json", "missing.fake", clipPath(clip)});
    const auto files = nlohmann::json::parse(run.output)["files"];
    EXPECT_EQ(files[0]["refusal"], "there is no such file");
    EXPECT_FALSE(files[1].contains("refusal"));
}

TEST(Info, WhatThePluginLeaksFailsTheRun) {
    const fakes::FakeClip clip("leak-suite");
    const ProgramRun run = withFake({"info", clipPath(clip)});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(firstLine(run.errors),
              "importhost: The suite 'Premiere PPix Creator Suite' version 1 was acquired 1 time and released 0 "
              "times.");
}

TEST(Info, JsonHasTheProblems) {
    const fakes::FakeClip clip("unlisted-field");
    const ProgramRun run = withFake({"info", "--json", clipPath(clip)});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(run.output)["problems"],
              (nlohmann::json{"Selector 37 wrote bytes of its record that are not its own: 32."}));
}

TEST(Info, APluginWithoutALogIsReported) {
    const fakes::FakeClip clip;
    EXPECT_EQ(withFake({"info", "--log", clipPath(clip)}).errors, "importhost: The plug-in wrote no log.\n");
}

TEST(Frames, ChecksumsHaveALineForEachFrame) {
    const fakes::FakeClip clip("formats=yuy2");
    const ProgramRun run = withFake({"frames", clipPath(clip), "--range", "1-5", "--every", "2", "--as", "checksum"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "000001  yuy2  8x6  5cae6522\n000003  yuy2  8x6  4b6b627b\n000005  yuy2  8x6  73246b90\n");
}

TEST(Frames, ChecksumsDoNotDependOnRowPadding) {
    const fakes::FakeClip clip("formats=bgra");
    const auto with = [&](const char* profile) {
        return withFake({"frames", clipPath(clip), "--as", "checksum", "--profile", profile}).output;
    };
    EXPECT_EQ(with("odd-rows"), with("editor-11"));
    EXPECT_EQ(with("tight-rows"), with("editor-11"));
}

TEST(Frames, AnUnofferedFormatIsAUsageError) {
    const fakes::FakeClip clip;
    const ProgramRun run = withFake({"frames", clipPath(clip), "--format", "v210"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors,
              "importhost: The pixel format 'v210' is not offered for this clip; offered are bgra, yuy2.\n");
}

TEST(Frames, ARangeBeyondTheClipIsAUsageError) {
    const fakes::FakeClip clip;
    EXPECT_EQ(withFake({"frames", clipPath(clip), "--range", "5-10"}).exitCode, 2);
    EXPECT_EQ(withFake({"frames", clipPath(clip), "--range", "10"}).exitCode, 2);
}

TEST(Frames, OfAClipWithoutFramesFail) {
    const fakes::FakeClip clip("frames=0");
    for (const std::vector<std::string>& range : {std::vector<std::string>{}, {"--range", "0-9"}}) {
        std::vector<std::string> arguments = {"frames", clipPath(clip), "--as", "checksum"};
        arguments.insert(arguments.end(), range.begin(), range.end());
        const ProgramRun run = withFake(arguments);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.errors, "importhost: '" + clipPath(clip) + "' has no frames.\n");
    }
}

TEST(Frames, AnInvalidRangeIsAUsageError) {
    for (const char* range : {"5-4", "x", "-3", "3-x", "1-2-3", ""}) {
        EXPECT_EQ(withFake({"frames", "x", std::string("--range=") + range}).exitCode, 2) << range;
    }
}

TEST(Frames, PicturesAreNamedAfterClipAndFrame) {
    const fakes::FakeClip clip;
    const auto folder = clip.path().parent_path() / "out" / "deep";
    EXPECT_EQ(withFake({"frames", clipPath(clip), "--range", "8-", "--out", hostkit::toUtf8(folder)}).exitCode, 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "clip_000008.png"));
    EXPECT_TRUE(std::filesystem::exists(folder / "clip_000009.png"));
    EXPECT_FALSE(std::filesystem::exists(folder / "clip_000010.png"));
}

TEST(Frames, RawHasTheTopRowFirst) {
    const fakes::FakeClip clip;
    const auto folder = clip.path().parent_path() / "out";
    withFake({"frames", clipPath(clip), "--range", "9", "--as", "raw", "--out", hostkit::toUtf8(folder)});
    std::ifstream in(folder / "clip_000009.bgra", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    ASSERT_EQ(bytes.size(), 8u * 6 * 4);
    EXPECT_EQ(bytes.substr(0, 4), std::string("\x00\x00\x09\xFF", 4));
    EXPECT_EQ(bytes.substr(8 * 5 * 4, 4), std::string("\x00\x50\x09\xFF", 4));
}

TEST(Frames, AFailedFrameIsPrintedAndFailsTheRun) {
    const fakes::FakeClip clip("missing-frames");
    const ProgramRun run = withFake({"frames", clipPath(clip), "--range", "0-1", "--as", "checksum"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: Frame 0 failed: imFrameNotFound (28)\n"
                          "importhost: Frame 1 failed: imFrameNotFound (28)\n");
}

TEST(Frames, AnExceptionIsAFailure) {
    const fakes::FakeClip clip("throw");
    const ProgramRun run = withFake({"frames", clipPath(clip), "--range", "0", "--as", "checksum"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: Frame 0 failed: an exception left the plug-in\n");
}

TEST(Frames, AFrameWrittenPastItsEndFailsTheRun) {
    const fakes::FakeClip clip("overrun-frame");
    const ProgramRun run = withFake({"frames", clipPath(clip), "--range", "0", "--as", "checksum"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: A frame (bgra, 8 x 6) was overrun.\n");
}

TEST(Sheet, IsWritten) {
    const fakes::FakeClip clip;
    const auto path = clip.path().parent_path() / "sheet.png";
    EXPECT_EQ(withFake({"sheet", clipPath(clip), "-o", hostkit::toUtf8(path), "--count", "4"}).exitCode, 0);
    EXPECT_GT(std::filesystem::file_size(path), 1000u);
}

TEST(Sheet, IsWrittenAndFailsIfFramesFail) {
    const fakes::FakeClip clip("missing-frames");
    const auto path = clip.path().parent_path() / "sheet.png";
    const ProgramRun run = withFake({"sheet", clipPath(clip), "-o", hostkit::toUtf8(path)});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(programs::contains(run.errors, " frames failed; the sheet shows their results.\n")) << run.errors;
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(Sheet, OfAClipWithoutFramesFailsAndIsNotWritten) {
    const fakes::FakeClip clip("frames=0");
    const auto path = clip.path().parent_path() / "sheet.png";
    const ProgramRun run = withFake({"sheet", clipPath(clip), "-o", hostkit::toUtf8(path)});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: '" + clipPath(clip) + "' has no frames.\n");
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(Sheet, AnUnreadableFormatFails) {
    const fakes::FakeClip clip("formats=BGra");
    const ProgramRun run = withFake({"sheet", clipPath(clip), "-o", "never.png"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors,
              "importhost: No picture can be made of any pixel format that is offered for this clip.\n");
}

}  // namespace
