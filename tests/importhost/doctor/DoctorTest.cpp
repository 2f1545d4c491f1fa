// The program itself, with named plug-ins. For the registry see tests/package/doctor.sh.
#include "importhost/Program.h"
#include "support/TempFolder.h"

#include "hostkit/plugin/PluginLog.h"

#include <fstream>

namespace {

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::string beside(const std::string& fileName) {
    return hostkit::toUtf8(hostkit::PluginLibrary::programFolder() / fileName);
}

std::string pluginBeside() { return beside(hostkit::PluginLibrary::usualFileName()); }

TEST(Doctor, FindsNothingToFixInThePluginOfItsFolder) {
    const programs::ProgramRun run = programs::runImporthost({"doctor", "--plugin", pluginBeside()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(contains(run.output, "    can be loaded   yes\n    codec library   " + beside("quorvane_common64")))
        << run.output;
    EXPECT_TRUE(contains(run.output, "\nNothing to fix.\n")) << run.output;
}

TEST(Doctor, WritesNoLogAndNoFolderForIt) {
    const bool before = std::filesystem::exists(hostkit::pluginLogFolder());
    const hostkit::PluginLog log;
    const hostkit::LogSwitch on;
    programs::runImporthost({"doctor", "--plugin", pluginBeside()});
    EXPECT_TRUE(log.newFiles().empty());
    EXPECT_EQ(std::filesystem::exists(hostkit::pluginLogFolder()), before);
}

TEST(Doctor, SurvivesAPluginThatEndsItsProgram) {
    const programs::ProgramRun run =
        programs::runImporthost({"doctor", "--plugin", beside(CRASHING_IMPORTER_FILE_NAME)});
    expectOutput(run, 1, {"A program that loads it ends with exit code 7."});
}

TEST(Doctor, ReportsAFileThatIsNoLibrary) {
    const TempFolder place;
    std::ofstream(place.folder() / "text.prm") << "text";
    const programs::ProgramRun run = programs::runImporthost({"doctor", "--plugin", place.path("text.prm")});
    expectOutput(run, 1, {"  1. The plug-in cannot be used: "});
}

TEST(Doctor, PlaysNoHostAndSwitchesNoLog) {
    EXPECT_EQ(programs::runImporthost({"doctor", "--log"}).exitCode, 2);
    EXPECT_EQ(programs::runImporthost({"doctor", "--profile", "editor-11"}).exitCode, 2);
}

}  // namespace
