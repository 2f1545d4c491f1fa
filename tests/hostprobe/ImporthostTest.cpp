// The command-line host, run as a program: the probe complains about none of its commands.
#include "ProbeRun.h"

#include "hostkit/host/HostProfile.h"
#include "hostkit/system/ChildProcess.h"
#include "hostkit/system/Text.h"

namespace {

using Words = std::vector<std::string>;

struct Command {
    std::string name;
    Words words;            // {clip} and {folder} are filled in
    bool isAsync = false;
};

// In every profile.
const std::vector<Command> kCommands = {
    {"Info", {"info", "{clip}"}},
    {"Frames", {"frames", "{clip}", "--as", "checksum"}},
    {"AsyncFrames", {"frames", "{clip}", "--as", "checksum", "--async", "4", "--shuffle", "3", "--refocus", "5"}, true},
    {"Sheet", {"sheet", "{clip}", "-o", "{folder}/sheet.png"}},
    {"Audio", {"audio", "{clip}", "-o", "{folder}/sound.wav", "--stream", "2"}},
    {"Bench", {"bench", "{clip}", "--frames", "10", "--busy", "0"}},
};

// Once, in the default profile.
const std::vector<Command> kVariants = {
    {"InfoAsJson", {"info", "{clip}", "--json"}},
    {"InfoOfTwoFiles", {"info", "{clip}", "{folder}/second.probe"}},
    {"FramesAsPictures", {"frames", "{clip}", "--out", "{folder}", "--range", "2-9", "--every", "3"}},
    {"FramesAsRawBytes", {"frames", "{clip}", "--out", "{folder}", "--as", "raw", "--format", "v210"}},
    {"FramesInYuy2", {"frames", "{clip}", "--as", "checksum", "--format", "yuy2", "--range", "11"}},
    {"AsyncInTurn", {"frames", "{clip}", "--as", "checksum", "--async", "1"}, true},
    {"AsyncWithoutRefocus", {"frames", "{clip}", "--as", "checksum", "--async", "12", "--refocus", "0"}, true},
    {"AsyncRefocusEachFrame", {"frames", "{clip}", "--as", "checksum", "--async", "3", "--refocus", "1"}, true},
    {"SheetOfOneFrame", {"sheet", "{clip}", "-o", "{folder}/sheet.png", "--count", "1", "--columns", "2", "--width",
                         "64"}},
    {"AudioOfTheFirstStream", {"audio", "{clip}", "-o", "{folder}/sound.wav", "--block", "1000"}},
    {"AudioOfARange", {"audio", "{clip}", "-o", "{folder}/sound.wav", "--stream", "1", "--range", "100-23039"}},
};

struct Case {
    std::string profile;
    Command command;
};

void PrintTo(const Case& each, std::ostream* out) { *out << each.profile << ", " << each.command.name; }

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const hostkit::HostProfile& profile : hostkit::hostProfiles()) {
        for (const Command& command : kCommands) {
            if (profile.asksForAsync || !command.isAsync) {
                cases.push_back({profile.name, command});
            }
        }
    }
    for (const Command& command : kVariants) {
        cases.push_back({"editor-11", command});
    }
    return cases;
}

Words filled(Words words, const ProbeRun& run) {
    const std::pair<std::string, std::string> marks[] = {{"{clip}", run.path("first.probe")},
                                                         {"{folder}", run.path("")}};
    for (std::string& word : words) {
        for (const auto& [mark, value] : marks) {
            if (const std::size_t at = word.find(mark); at != std::string::npos) {
                word.replace(at, mark.size(), value);
            }
        }
    }
    return words;
}

hostkit::ChildResult importhost(const Case& each, const ProbeRun& run) {
    Words words = filled(each.command.words, run);
    words.insert(words.end(), {"--profile", each.profile, "--plugin", hostkit::toUtf8(probePath())});
    return hostkit::runProgram(hostkit::PluginLibrary::programFolder() / IMPORTHOST_FILE_NAME, words);
}

class Importhost : public testing::TestWithParam<Case> {};

TEST_P(Importhost, RaisesNoComplaint) {
    const ProbeRun run(expectationsFor(GetParam().profile));
    const hostkit::ChildResult result = importhost(GetParam(), run);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    const ProbeReport report = run.report();
    EXPECT_TRUE(report.isWhole);
    EXPECT_EQ(report.complaints, Words{});
    EXPECT_GE(report.calls, 10);
}

INSTANTIATE_TEST_SUITE_P(Each, Importhost, testing::ValuesIn(allCases()), [](const auto& instance) {
    std::string name = instance.param.profile + instance.param.command.name;
    std::erase(name, '-');
    return name;
});

TEST(ImporthostFrames, AsynchronousOnesEqualSynchronousOnes) {
    const ProbeRun run(expectationsFor("editor-11"));
    const std::string expected = importhost({"editor-11", kCommands[1]}, run).output;
    EXPECT_NE(expected, "");
    EXPECT_EQ(importhost({"editor-11", kCommands[2]}, run).output, expected);
}

// The other tests rely on it: complaints of a run in another program are reported.
TEST(ImporthostReport, HasTheComplaintsOfAnotherProgram) {
    const ProbeRun run("version=23");
    const hostkit::ChildResult result = importhost({"editor-11", kCommands[0]}, run);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(run.report().complaints, Words{"The interface version is 18, not 23."});
}

}  // namespace
