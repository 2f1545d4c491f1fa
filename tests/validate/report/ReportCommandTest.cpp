// --report and --json, written by the program.
#include "validate/commands/ValidateProgram.h"

#include "aviwriter/Sample.h"
#include "support/TempFolder.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>

using namespace programs;

namespace {

class ReportFiles : public testing::Test {
protected:
    std::string html() const { return m_folder.path("report.html"); }
    std::string json() const { return m_folder.path("report.json"); }

    std::string page() const { return contentOf(html()); }
    nlohmann::json document() const { return nlohmann::json::parse(contentOf(json())); }

    // A small clip with a stereo stream of sound.
    std::string clip(const std::string& name) const {
        aviwriter::SampleOptions options;
        options.width = 64;
        options.height = 48;
        options.frames = 5;
        options.audio = {{aviwriter::SampleFormat::pcm16, 2, 48000, aviwriter::WaveRecord::pcm16}};
        const aviwriter::Bytes bytes = aviwriter::sampleBytes(options);
        std::ofstream out(hostkit::pathFromUtf8(m_folder.path(name)), std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return m_folder.path(name);
    }

    static std::string contentOf(const std::string& path) {
        std::ifstream in(hostkit::pathFromUtf8(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    const TempFolder m_folder;
};

TEST_F(ReportFiles, HaveTheFactsPicturesAndSoundOfTheUsersFile) {
    const ProgramRun run = validate({"--only", "formats-end", "--report", html(), "--json", json(), clip("a b.avi")});
    expectOutput(run, 0, {"Written: " + html() + "\nWritten: " + json() + "\n"});
    const std::string shown = page();
    EXPECT_TRUE(contains(shown, "The plug-in passed 1 check.")) << shown;
    EXPECT_TRUE(contains(shown, "64 \xC3\x97 48, 25.000 fps (25/1), 5 frames, 0:00:00.200")) << shown;
    EXPECT_TRUE(contains(shown, "src=\"data:image/png;base64,iVBOR")) << shown;
    EXPECT_TRUE(contains(shown, "<path d=\"M0 ")) << shown;
    EXPECT_TRUE(contains(shown, "\">-1.2 dB</span>")) << shown;
}

TEST_F(ReportFiles, JsonHasTheSameWithoutThePictures) {
    const std::string file = clip("clip.avi");
    validate({"--only", "formats-end", "--seed", "5", "--json", json(), file});
    const nlohmann::json told = document();
    EXPECT_EQ(told["schema"], 1);
    EXPECT_EQ(told["run"]["seed"], "5");
    EXPECT_EQ(told["run"]["ownSamples"], false);
    EXPECT_EQ(told["checks"][0]["id"], "formats-end");
    EXPECT_EQ(told["plugin"]["offers"]["formats"][0]["extension"], "avi");
    ASSERT_EQ(told["files"].size(), 1u);
    EXPECT_EQ(told["files"][0]["name"], "clip.avi");
    EXPECT_EQ(told["files"][0]["bytes"], std::filesystem::file_size(hostkit::pathFromUtf8(file)));
    EXPECT_EQ(told["files"][0]["problem"], "");
    EXPECT_EQ(told["files"][0]["facts"]["streams"][0]["video"]["width"], 64);
    EXPECT_EQ(told["files"][0]["sheet"]["frames"].size(), 5u);
    EXPECT_FALSE(told["files"][0]["sheet"].contains("png"));
    EXPECT_EQ(told["files"][0]["waveforms"][0]["channels"][1]["peak"], "-1.2 dB");
    EXPECT_EQ(told["files"][0]["waveforms"][0]["channels"][1]["low"].size(), 400u);
    EXPECT_EQ(told["notImported"], nlohmann::json::array());
}

TEST_F(ReportFiles, ShowAFewOfTheOwnSamples) {
    validate({"--only", "formats-end", "--level", "1", "--json", json()});
    const nlohmann::json told = document();
    ASSERT_EQ(told["files"].size(), 2u);
    EXPECT_EQ(told["files"][0]["name"], "plain.avi");
    EXPECT_EQ(told["files"][1]["name"], "film-ntsc.avi");
}

TEST_F(ReportFiles, ShowACrashInPlaceOfTheFacts) {
    const ProgramRun run = validateWrong("crashes-at-open", {"--only", "formats-end", "--report", html(), "--json",
                                                             json(), clip("clip.avi")});
    EXPECT_EQ(run.exitCode, 0) << run.output << run.errors;
    const nlohmann::json file = document()["files"][0];
    EXPECT_TRUE(contains(file["problem"], "Asked about this file, the plug-in ended its process: ")) << file;
    EXPECT_TRUE(file["facts"].is_null()) << file;
    EXPECT_TRUE(contains(page(), "Asked about this file, the plug-in ended its process: "));
}

TEST_F(ReportFiles, ShowAFileThatThePluginRefuses) {
    const std::string path = m_folder.path("text.avi");
    std::ofstream(hostkit::pathFromUtf8(path)) << "no film";
    validate({"--only", "formats-end", "--report", html(), "--json", json(), path});
    EXPECT_EQ(document()["files"][0]["facts"]["streams"][0]["result"]["name"], "imBadFile");
    EXPECT_TRUE(contains(page(), "<dt>Describing</dt>\n<dd>imBadFile (2)</dd>")) << page();
    const std::string heading = "<h1>The plug-in does not import &#39;text.avi&#39;. The plug-in passed 1 check.</h1>";
    EXPECT_TRUE(contains(page(), heading)) << page();
    EXPECT_EQ(document()["notImported"], nlohmann::json{"text.avi"});
}

TEST_F(ReportFiles, HaveTheCallsOfAFailureAndTheCommand) {
    const ProgramRun run =
        validateWrong("answers-every-selector",
                      {"--only", "unknown-selectors", "--level", "1", "--report", html(), "--json", json()});
    EXPECT_EQ(run.exitCode, 1);
    const nlohmann::json check = document()["checks"][0];
    EXPECT_EQ(check["verdict"], "fail");
    EXPECT_EQ(check["group"], "library");
    EXPECT_FALSE(check["calls"].empty());
    EXPECT_EQ(check["repeat"], restOfLine(run.output, "To repeat it: "));
    EXPECT_TRUE(contains(page(), "found imNoErr (0), wanted imUnsupported (3)"));
}

TEST_F(ReportFiles, AnUnwritableReportIsAUsageError) {
    for (const char* option : {"--report", "--json"}) {
        const ProgramRun run = validate({"--only", "formats-end", option, m_folder.path("missing/report")});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_TRUE(contains(run.errors, "cannot be written")) << run.errors;
    }
}

}  // namespace
