// importhost replay: its output, log and exit code.
#include "Recording.h"

#include "hostkit/plugin/PluginLog.h"
#include "importer/support/TestHome.h"
#include "importhost/RunLog.h"

#include <nlohmann/json.hpp>

using hostkit::toUtf8;
using programs::contains;
using programs::runImporthost;
using programs::ProgramRun;
using programs::Sample;
using recording::kSample;

namespace {

class ReplayCommand : public testing::Test {
protected:
    ReplayCommand() : m_sample(kSample) { useTestHome(); }

    static std::string logOf(const std::vector<std::string>& arguments) {
        std::vector<std::string> logged = arguments;
        logged.emplace_back("--log");
        return programs::logOf(runImporthost(logged));
    }

    // Replays a log, and deletes the new one.
    ProgramRun replayOf(const std::string& log, std::vector<std::string> options) const {
        std::ofstream(logPath(), std::ios::binary) << log;
        options.insert(options.begin(), {"replay", toUtf8(logPath())});
        const ProgramRun run = runImporthost(options);
        if (run.errors.find("log: ") != std::string::npos) {
            programs::logOf(run);
        }
        return run;
    }

    std::filesystem::path logPath() const { return m_sample.beside("user.log"); }
    const Sample& sample() const { return m_sample; }

private:
    Sample m_sample;
};

std::string lastLines(const std::string& text, int count) {
    std::size_t at = text.size();
    for (int i = 0; i <= count && at != std::string::npos && at > 0; ++i) {
        at = text.rfind('\n', at - 1);
    }
    return at == std::string::npos ? text : text.substr(at + 1);
}

TEST_F(ReplayCommand, AllCallsOfInfoAreTheSameAgain) {
    const ProgramRun run = replayOf(logOf({"info", sample().text()}), {sample().text()});
    EXPECT_EQ(run.exitCode, 0) << run.output << run.errors;
    EXPECT_TRUE(contains(run.output, "\n     1  imInit: imNoErr (0)\n")) << run.output;
    EXPECT_TRUE(contains(run.output, " 0 skipped; 0 results differ; messages of 0 calls differ.\n")) << run.output;
    EXPECT_FALSE(contains(run.output, "DIFFERS")) << run.output;
}

TEST_F(ReplayCommand, AsynchronousFramesAreTheSameAgain) {
    const std::string log = logOf({"frames", sample().text(), "--as", "checksum", "--async", "3", "--refocus", "2",
                                   "--shuffle", "5"});
    const ProgramRun run = replayOf(log, {sample().text()});
    EXPECT_EQ(run.exitCode, 0) << run.output << run.errors;
    EXPECT_TRUE(contains(run.output, "aiClose sample.avi: aiNoError (0)\n")) << run.output;
    EXPECT_TRUE(contains(run.output, " 0 skipped; 0 results differ; messages of 0 calls differ.\n")) << run.output;
}

TEST_F(ReplayCommand, OneChangedResultIsTheOnlyDifference) {
    std::string log = logOf({"frames", sample().text(), "--as", "checksum"});
    const std::size_t frame = log.find("[imGetSourceVideo]");
    const std::size_t result = log.find("    [imNoErr] (0)", frame);
    log.replace(result, 17, "    [imBadFile] (2)");
    const ProgramRun run = replayOf(log, {sample().text()});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "imGetSourceVideo sample.avi, time 0, 16 x 8 yuy2: imNoErr (0) DIFFERS from the "
                                     "log's imBadFile (2)\n"))
        << run.output;
    EXPECT_EQ(run.output.find("DIFFERS"), run.output.rfind("DIFFERS"));
    EXPECT_TRUE(contains(run.output, " 0 skipped; 1 result differs; messages of 0 calls differ.\n")) << run.output;
}

TEST_F(ReplayCommand, OneChangedMessageIsTheOnlyDifference) {
    const std::string log = recording::replaced(logOf({"frames", sample().text(), "--as", "checksum"}),
                                                "frameIndex:  2 (total: 4)", "frameIndex:  3 (total: 4)");
    const ProgramRun run = replayOf(log, {sample().text()});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, ": imGetSourceVideo sample.avi, time 20321280000, 16 x 8 yuy2\n"
                                     "    - frameIndex:  3 (total: 4)\n"
                                     "    + frameIndex:  2 (total: 4)\n"))
        << run.output;
    EXPECT_TRUE(contains(run.output, " 0 results differ; messages of 1 call differ.\n")) << run.output;
}

TEST_F(ReplayCommand, ResultsOnlyWritesNoLogAndComparesNoMessages) {
    const std::string log = recording::replaced(logOf({"frames", sample().text(), "--as", "checksum"}),
                                                "frameIndex:  2 (total: 4)", "frameIndex:  3 (total: 4)");
    const hostkit::PluginLog before;
    const ProgramRun run = replayOf(log, {sample().text(), "--results-only"});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(before.newFiles().size(), 0u);
    EXPECT_TRUE(contains(run.output, " 0 results differ; messages were not compared.\n")) << run.output;
}

TEST_F(ReplayCommand, AMissingFileArgumentIsReported) {
    const std::filesystem::path other = sample().beside("other.avi");
    std::filesystem::copy_file(sample().path(), other);
    const std::string log = logOf({"info", sample().text(), toUtf8(other)});
    const ProgramRun both = replayOf(log, {sample().text(), toUtf8(other)});
    EXPECT_EQ(both.exitCode, 0) << both.output;
    EXPECT_TRUE(contains(both.output, " 0 skipped; 0 results differ; messages of 0 calls differ.\n")) << both.output;
    const ProgramRun one = replayOf(log, {toUtf8(other)});
    EXPECT_EQ(one.exitCode, 0) << one.output;
    EXPECT_TRUE(contains(one.output, "file    " + sample().text() + " -> not given; ")) << one.output;
    EXPECT_TRUE(contains(one.output, "imOpenFile8 sample.avi, stream 0: skipped, no file was given for '" +
                                         sample().text() + "'\n"))
        << one.output;
    EXPECT_TRUE(contains(one.output, "imOpenFile8 other.avi, stream 0: imNoErr (0)\n")) << one.output;
}

TEST_F(ReplayCommand, ALogOfACrashEndsWithTheCrashingCall) {
    std::string log = logOf({"frames", sample().text(), "--as", "checksum"});
    log.resize(log.find('\n', log.find("inFrameFormats[0]")) + 1);
    const ProgramRun run = replayOf(log, {sample().text()});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(contains(run.output, "imGetSourceVideo sample.avi, time 0, 16 x 8 yuy2: imNoErr (0), where the log "
                                     "ends\n"))
        << run.output;
    EXPECT_EQ(lastLines(run.output, 3), "1 call without an end in the log.\n"
                                        "1 file left open by the log: closed.\n"
                                        "No shutdown in the log: the plug-in was shut down.\n");
}

TEST_F(ReplayCommand, ASuiteThatTheHostRefusedIsRefusedAgain) {
    const std::string log = logOf({"frames", sample().text(), "--as", "checksum", "--profile", "no-ppix-suite"});
    const ProgramRun run = replayOf(log, {sample().text()});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(contains(run.output, "played  The host refuses the suite 'Premiere PPix Suite' version 1.\n"))
        << run.output;
    EXPECT_TRUE(contains(run.output, "imGetSourceVideo sample.avi, time 0, no formats (assumed: time 0) (assumed: no "
                                     "frame formats): malUnknownError (99)\n"))
        << run.output;
    EXPECT_TRUE(contains(run.output, "; 0 results differ; messages of 0 calls differ.\n")) << run.output;
}

TEST_F(ReplayCommand, AnEscapingExceptionIsADifference) {
    const std::string log = logOf({"frames", sample().text(), "--as", "checksum"});
    const fakes::TemporaryFile clip(u8"fake/sample.avi", "fake throw");
    const ProgramRun run = replayOf(log, {toUtf8(clip.path()), "--results-only", "--plugin",
                                          toUtf8(fakes::importerPath())});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "imGetSourceVideo sample.avi, time 0, 16 x 8 yuy2: an exception left the plug-in "
                                     "DIFFERS from the log's imNoErr (0)\n"))
        << run.output;
}

TEST_F(ReplayCommand, TheJsonReportHasTheSameFacts) {
    const std::string log = recording::replaced(logOf({"frames", sample().text(), "--as", "checksum"}),
                                                "    [malSupports8] (101)", "    [malSupports8] (102)");
    const std::filesystem::path path = sample().beside("report.json");
    EXPECT_EQ(replayOf(log, {sample().text(), "--json", toUtf8(path)}).exitCode, 1);
    std::ifstream in(path, std::ios::binary);
    const auto json = nlohmann::json::parse(in);
    EXPECT_EQ(json["complete"], true);
    EXPECT_EQ(json["files"][0]["file"], sample().text());
    EXPECT_EQ(json["totals"]["resultsThatDiffer"], 1);
    EXPECT_EQ(json["totals"]["callsWhoseMessagesDiffer"], 0);
    EXPECT_EQ(json["totals"]["skipped"], 0);
    EXPECT_EQ(json["problems"], nlohmann::json::array());
    const auto& call = json["calls"][4];
    EXPECT_EQ(call["name"], "imGetSupports8");
    EXPECT_EQ(call["logged"], 102);
    EXPECT_EQ(call["now"], 101);
    EXPECT_EQ(call["differs"], true);
}

TEST_F(ReplayCommand, AFileThatIsNotALogIsAUsageError) {
    for (const std::string& text : {std::string(), std::string("Dear support,\n"), std::string(3000000, 'x'),
                                    std::string(1000, '\0')}) {
        const ProgramRun run = replayOf(text, {sample().text()});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_TRUE(contains(run.errors, "' is not a log of the plug-in: ")) << run.errors;
        EXPECT_EQ(run.output, "");
    }
}

TEST_F(ReplayCommand, WithoutAnyOfTheLogsFilesItIsAUsageError) {
    const std::string log = logOf({"info", sample().text()});
    const ProgramRun run = replayOf(log, {});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors, "importhost: None of the log's files was given; the first is '" + sample().text() + "'.\n");
}

TEST_F(ReplayCommand, MissingFilesAreUsageErrors) {
    EXPECT_EQ(runImporthost({"replay", "missing.log"}).errors,
              "importhost: The log 'missing.log' cannot be read.\n");
    EXPECT_EQ(runImporthost({"replay", "missing.log", "missing.avi"}).errors,
              "importhost: There is no file 'missing.avi'.\n");
    EXPECT_EQ(runImporthost({"replay", "missing.log"}).exitCode, 2);
    EXPECT_EQ(runImporthost({"replay"}).exitCode, 2);
}

TEST_F(ReplayCommand, AMissingPluginCannotBeLoaded) {
    const std::string log = logOf({"info", sample().text()});
    EXPECT_EQ(replayOf(log, {sample().text(), "--plugin", "missing.prm"}).exitCode, 3);
}

}  // namespace
