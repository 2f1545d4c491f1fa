// The program with the plug-in itself, on samples of the stand-in codec.
#include "fileio/SystemFile.h"
#include "importer/support/TestHome.h"
#include "importhost/Sample.h"

#include <nlohmann/json.hpp>

#include <sstream>

using programs::runImporthost;
using programs::ProgramRun;
using programs::Sample;

namespace {

std::ptrdiff_t lineCount(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

TEST(Plugin, DescribesASample) {
    const Sample sample({"--type", "2Y8Q", "--size", "64x48", "--frames", "6", "--audio", "pcm16:2:48000"});
    const ProgramRun run = runImporthost({"info", "--json", sample.text()});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const auto json = nlohmann::json::parse(run.output);
    EXPECT_EQ(json["formats"][0]["name"], "Quorvane AVI");
    EXPECT_EQ(json["subTypes"].size(), 16u);
    const auto& file = json["files"][0];
    EXPECT_EQ(file["streams"][0]["video"]["frames"], 6);
    EXPECT_EQ(file["streams"][0]["video"]["subTypeName"], "Quorvane 8-bit YUV 4:2:2");
    EXPECT_EQ(file["streams"][0]["sound"]["sampleType"], "16-bit integer");
    EXPECT_EQ(file["pixelFormats"][0]["code"], "yuy2");
    EXPECT_EQ(json["problems"], nlohmann::json::array());
}

TEST(Plugin, DeliversTheSameFramesToEveryHost) {
    const Sample sample({"--type", "AR8Q", "--size", "34x22", "--frames", "4"});
    const auto with = [&](const std::string& profile) {
        const ProgramRun run = runImporthost({"frames", sample.text(), "--as", "checksum", "--profile", profile});
        EXPECT_EQ(run.exitCode, 0) << profile << "\n" << run.errors;
        return run.output;
    };
    const std::string usual = with("editor-11");
    EXPECT_EQ(lineCount(usual), 4);
    for (const char* profile :
         {"editor-9", "editor-14", "tight-rows", "odd-rows", "no-cache-suite", "no-error-suite"}) {
        EXPECT_EQ(with(profile), usual) << profile;
    }
}

TEST(Plugin, WritesAPictureOfEveryOfferedFormat) {
    const Sample sample({"--type", "AR8Q", "--size", "34x22", "--frames", "1"});
    const auto info = nlohmann::json::parse(runImporthost({"info", "--json", sample.text()}).output);
    const auto& formats = info["files"][0]["pixelFormats"];
    EXPECT_GT(formats.size(), 10u);
    for (const auto& format : formats) {
        const std::string code = format["code"];
        const auto folder = sample.beside(code.c_str());
        const ProgramRun run =
            runImporthost({"frames", sample.text(), "--format", code, "--out", hostkit::toUtf8(folder)});
        EXPECT_EQ(run.exitCode, 0) << code << "\n" << run.errors;
        EXPECT_TRUE(std::filesystem::exists(folder / "sample_000000.png")) << code;
    }
}

TEST(Plugin, MakesASheet) {
    const Sample sample({"--type", "2Y0Q", "--size", "160x90", "--frames", "12"});
    const auto path = sample.beside("sheet.png");
    const ProgramRun run = runImporthost({"sheet", sample.text(), "-o", hostkit::toUtf8(path)});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_GT(std::filesystem::file_size(path), 10000u);
}

TEST(Plugin, WritesItsLogWhenAsked) {
    useTestHome();
    const Sample sample({"--type", "GR8Q", "--size", "16x16", "--frames", "1"});
    const ProgramRun run = runImporthost({"info", "--log", sample.text()});
    ASSERT_EQ(run.errors.substr(0, 5), "log: ") << run.errors;
    const auto file = hostkit::pathFromUtf8(run.errors.substr(5, run.errors.find('\n') - 5));
    std::ifstream in(file, std::ios::binary);
    const std::string log{std::istreambuf_iterator<char>(in), {}};
    EXPECT_NE(log.find("[imOpenFile8] (39)"), std::string::npos) << file;
    in.close();
    std::filesystem::remove(file);
}

TEST(Plugin, InfoSaysWhyAFileIsRefused) {
    const Sample soundAlone({"--no-video", "--frames", "1", "--audio", "pcm16:2:48000"});
    std::ofstream(soundAlone.beside("text.avi")) << "no pictures in here";
    std::ofstream(soundAlone.beside("empty.avi"));
    fileio::SystemFile recording;
    ASSERT_TRUE(recording.open(hostkit::toUtf8(soundAlone.beside("recording.avi")).c_str(),
                               fileio::kOpenWrite | fileio::kOpenShareRead));
    const struct {
        const char* file;
        const char* answer;
    } rows[] = {
        {"missing.avi", "open            imBadFile (2): there is no such file"},
        {"", "open            imBadFile (2): it is a directory"},
        {"recording.avi", "open            imBadFile (2): it can be read; perhaps another program is writing it"},
        {"empty.avi", "stream 0        imBadFile (2)\n                  it is empty"},
        {"text.avi", "stream 0        imBadFile (2)\n                  it does not begin as an AVI file does"},
        {"sample.avi", "stream 0        imBadFile (2)\n                  the plug-in's log has the cause (importhost "
                       "info --log)"},
    };
    for (const auto& [file, answer] : rows) {
        const std::string path = hostkit::toUtf8(soundAlone.beside(file));
        const ProgramRun run = runImporthost({"info", path});
        EXPECT_EQ(run.exitCode, 1) << path;
        EXPECT_EQ(run.output.substr(run.output.find("\n\n") + 2), path + "\n  " + answer + "\n");
        EXPECT_EQ(run.errors, "");
    }
}

TEST(Plugin, OtherCommandsSayItToo) {
    const fakes::TemporaryFile text(u8"text.avi", "no pictures in here");
    const std::string path = hostkit::toUtf8(text.path());
    for (const char* command : {"sheet", "audio"}) {
        EXPECT_EQ(runImporthost({command, "missing.avi", "-o", "never"}).errors,
                  "importhost: 'missing.avi' cannot be opened: imBadFile (2): there is no such file.\n");
        EXPECT_EQ(runImporthost({command, path, "-o", "never"}).errors,
                  "importhost: '" + path +
                      "' cannot be described: imBadFile (2): it does not begin as an AVI file does.\n");
    }
}

TEST(Plugin, FailsEveryFrameForAHostWithoutThePpixSuite) {
    const Sample sample({"--type", "GR8Q", "--size", "16x16", "--frames", "1"});
    const ProgramRun run = runImporthost({"frames", sample.text(), "--as", "checksum", "--profile", "no-ppix-suite"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: Frame 0 failed: malUnknownError (99)\n");
}

}  // namespace
