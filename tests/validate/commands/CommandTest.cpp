// The program itself: verdicts, exit codes, seeds and files.
#include "ValidateProgram.h"

#include "importhost/validate/run/CheckGroups.h"
#include "support/TempFolder.h"

#include <fstream>
#include <iterator>
#include <sstream>

using namespace programs;

namespace {

using importhost::validate::Check;
using importhost::validate::CheckGroup;
using importhost::validate::checkGroups;

// Splits a line as a shell would; enough for what the program prints.
std::vector<std::string> wordsOf(const std::string& line) {
    std::vector<std::string> words;
    std::string word;
    char quote = 0;
    for (const char character : line + " ") {
        if (quote != 0 && character == quote) {
            quote = 0;
        } else if (quote == 0 && (character == '\'' || character == '"')) {
            quote = character;
        } else if (quote == 0 && character == ' ') {
            words.push_back(std::exchange(word, ""));
        } else {
            word += character;
        }
    }
    return words;
}

// A line for each check, without its time.
std::string verdictsOf(const ProgramRun& run) {
    std::istringstream lines(run.output);
    std::string verdicts;
    for (std::string line; std::getline(lines, line);) {
        if (line.size() > 49 && line[0] != ' ' && line.substr(7, 2) == "  ") {
            verdicts += line.substr(0, 49) + "\n";
        }
    }
    return verdicts;
}

std::string writtenFile(const TempFolder& folder, const std::string& name, const std::string& content) {
    std::ofstream(hostkit::pathFromUtf8(folder.path(name)), std::ios::binary) << content;
    return folder.path(name);
}

// --- Verdicts ---------------------------------------------------------------------------------------------------

TEST(ValidateCommand, TheRealPluginPasses) {
    const ProgramRun run = validate({"--only", "formats-end", "--level", "1"});
    expectOutput(run, 0, {"\npass     formats-end ", "\n1 check: 1 passed.\n"});
}

TEST(ValidateCommand, AFailureHasTheFoundAndTheWantedValue) {
    const ProgramRun run = validateWrong("answers-every-selector", {"--only", "unknown-selectors", "--level", "1"});
    expectOutput(run, 1, {"\nFAIL     unknown-selectors ", "found imNoErr (0), wanted imUnsupported (3)"});
}

TEST(ValidateCommand, ACrashHasTheLastStepAndCalls) {
    const ProgramRun run = validateWrong("crashes-at-open", {"--only", "good-files-open", "--level", "1"});
    expectOutput(run, 1, {"\nCRASH    good-files-open ", "(at plain.avi)\n", "           imOpenFile8(",
                          "\n1 check: 0 passed, 1 CRASHED.\n"});
}

TEST(ValidateCommand, ACheckThatTakesTooLongIsStopped) {
    const ProgramRun run =
        validateWrong("hangs-at-highest-selector",
                      {"--only", "un*-selectors", "--level", "3", "--time-limit", "2", "--jobs", "1"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(verdictsOf(run),
              "TIMEOUT  unknown-selectors                       \n"
              "pass     unhandled-selectors                     \n")
        << run.output;
    EXPECT_TRUE(contains(run.output, "ended after 2 seconds")) << run.output;
    EXPECT_TRUE(contains(run.output, "\n2 checks: 1 passed, 1 TOOK TOO LONG.\n")) << run.output;
}

TEST(ValidateCommand, ASkippedCheckHasItsReason) {
    const TempFolder folder;
    const ProgramRun run = validate({"--only", "pixel-formats-end", writtenFile(folder, "text.avi", "no film")});
    expectOutput(run, 0, {"\nskip     pixel-formats-end ", " s  no file with pictures that the plug-in opens\n",
                          "\n1 check: 0 passed, 1 skipped.\n"});
}

TEST(ValidateCommand, MixedCompilersAreToldAsSuch) {
    const TempFolder folder;
    const std::filesystem::path plugin = folder.folder() / ("Mixed" WRONG_PLUGIN_SUFFIX);
    std::filesystem::copy_file(hostkit::PluginLibrary::programFolder() / ("WrongPlugin" WRONG_PLUGIN_SUFFIX), plugin);
    std::ofstream(plugin, std::ios::binary | std::ios::app) << ".?AVexception@std@@";
    const ProgramRun run = validate({"--plugin", hostkit::toUtf8(plugin), "--only", "foreign-exceptions"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(contains(run.output, " s  mixed compilers: the plug-in has Microsoft's C++ ABI and this program has "
                                     "not, so that no exception passes from one to the other\n"))
        << run.output;
    EXPECT_TRUE(contains(run.output, "\n1 check: 0 passed, 1 skipped.\n")) << run.output;
}

TEST(ValidateCommand, AWarningIsNoFailure) {
    const TempFolder folder;
    const ProgramRun run = validate({"--only", "good-files-open", writtenFile(folder, "text.avi", "no film")});
    expectOutput(run, 0, {"\nwarn     good-files-open ", "\n         text.avi: "});
    const std::string summary = "\nThe plug-in does not import 'text.avi'.\n1 check: 0 passed, 1 with a warning.\n";
    EXPECT_TRUE(contains(run.output, summary)) << run.output;
}

TEST(ValidateCommand, VerdictsAreTheSameInOneProcess) {
    const std::vector<std::string> arguments = {"--only", "*-end", "--level", "1", "--seed", "3"};
    std::vector<std::string> inProcess = arguments;
    inProcess.push_back("--in-process");
    EXPECT_EQ(verdictsOf(validateWrong("offers-formats-for-ever", inProcess)),
              verdictsOf(validateWrong("offers-formats-for-ever", arguments)));
}

TEST(ValidateCommand, ResultsDoNotDependOnTheJobs) {
    const ProgramRun one = validateWrong("leaks-suites", {"--level", "1", "--seed", "3", "--jobs", "1"});
    const ProgramRun two = validateWrong("leaks-suites", {"--level", "1", "--seed", "3", "--jobs", "2"});
    EXPECT_NE(verdictsOf(one), "");
    EXPECT_EQ(verdictsOf(two), verdictsOf(one));
}

// --- Seeds and commands -----------------------------------------------------------------------------------------

TEST(ValidateCommand, ARandomSeedIsPrinted) {
    const ProgramRun run = validate({"--only", "formats-end"});
    const std::string seed = restOfLine(run.output, " at level 5, seed ");
    EXPECT_NE(seed, ".");
    EXPECT_EQ(seed.find_first_not_of("0123456789"), seed.size() - 1) << seed;
}

TEST(ValidateCommand, AGivenSeedIsUsedWhole) {
    const ProgramRun run = validate({"--only", "formats-end", "--seed", "18446744073709551615"});
    EXPECT_EQ(restOfLine(run.output, " at level 5, seed "), "18446744073709551615.");
}

TEST(ValidateCommand, ANegativeSeedIsAUsageError) {
    EXPECT_EQ(validate({"--only", "formats-end", "--seed", "-3"}).exitCode, 2);
}

TEST(ValidateCommand, AFailureEndsWithACommandThatFailsAgain) {
    const ProgramRun run =
        validateWrong("answers-every-selector", {"--only", "unknown-selectors", "--level", "1", "--seed", "42"});
    std::vector<std::string> words = wordsOf(restOfLine(run.output, "To repeat it: "));
    ASSERT_GT(words.size(), 1u) << run.output;
    const EnvironmentVariable chosen("WRONG_PLUGIN", "answers-every-selector");
    const std::filesystem::path program = hostkit::pathFromUtf8(words.front());
    EXPECT_TRUE(std::filesystem::exists(program)) << words.front();
    words.erase(words.begin());
    const auto again = hostkit::runProgram(program, words);
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_EQ(verdictsOf({1, plainLines(again.output), ""}), verdictsOf(run));
    EXPECT_TRUE(contains(again.output, ", seed 42.")) << again.output;
}

TEST(ValidateCommand, TheCommandNamesFilesWithBlanksAndQuotes) {
    const TempFolder folder;
    const std::string file = writtenFile(folder, "it's a file.avi", "no film");
    const ProgramRun run = validateWrong("leaks-suites", {"--only", "formats-end", "--time-limit", "50", file});
#ifdef _WIN32
    const std::string quoted = "it's a file.avi\"";
#else
    const std::string quoted = "it'\\''s a file.avi'";
#endif
    const std::string command = restOfLine(run.output, "To repeat it: ");
    EXPECT_TRUE(command.ends_with(quoted)) << command;
    EXPECT_TRUE(contains(command, " --time-limit 50 ")) << command;
}

// --- Files ------------------------------------------------------------------------------------------------------

TEST(ValidateCommand, AMissingFileIsAUsageError) {
    const ProgramRun run = validate({"--only", "formats-end", "missing.avi"});
    expectErrors(run, 2, {"There is no file '"});
}

TEST(ValidateCommand, TheWorkFolderIsRemoved) {
    const auto count = [] {
        std::ptrdiff_t folders = 0;
        for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
            folders += hostkit::toUtf8(entry.path().filename()).starts_with("importhost-validate-");
        }
        return folders;
    };
    const TempFolder own;
    const EnvironmentVariable onPosix("TMPDIR", hostkit::toUtf8(own.folder()));
    const EnvironmentVariable onWindows("TMP", hostkit::toUtf8(own.folder()));
    ASSERT_EQ(count(), 0);
    EXPECT_EQ(validate({"--only", "formats-end"}).exitCode, 0);
    EXPECT_EQ(count(), 0);
}

// --- Usage ------------------------------------------------------------------------------------------------------

TEST(ValidateCommand, NothingSelectedIsAUsageError) {
    const ProgramRun run = validate({"--only", "no-such-check"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors, "importhost: No check was selected: none up to level 5 fits 'no-such-check'.\n");
}

TEST(ValidateCommand, AnInvalidLevelIsAUsageError) {
    EXPECT_EQ(validate({"--level", "0"}).exitCode, 2);
    EXPECT_EQ(validate({"--level", "11"}).exitCode, 2);
}

TEST(ValidateCommand, AnUnknownPluginCannotBeLoaded) {
    const ProgramRun run = validate({"--plugin", "missing.prm", "--only", "formats-end"});
    expectErrors(run, 3, {"There is no plug-in '"});
}

TEST(ValidateCommand, TheProfileCannotBeChosen) {
    EXPECT_EQ(validate({"--profile", "editor-14"}).exitCode, 2);
    EXPECT_EQ(validate({"--log"}).exitCode, 2);
}

// --- Lists and explanations ------------------------------------------------------------------------------------------

TEST(ValidateCommand, TheListNamesEveryCheckOnceWithItsLevel) {
    const ProgramRun run = validate({"--list"});
    EXPECT_EQ(run.exitCode, 0);
    for (const CheckGroup& group : checkGroups()) {
        for (const Check& check : group.checks) {
            const std::string line = "\n  " + std::string(check.id) + "  (level " + std::to_string(check.level) + ")\n";
            const std::size_t at = run.output.find(line);
            EXPECT_NE(at, std::string::npos) << line;
            EXPECT_EQ(run.output.find(line, at + 1), std::string::npos) << line;
        }
    }
}

TEST(ValidateCommand, TheListHonoursThePatternAndTheLevel) {
    const ProgramRun run = validate({"--list", "--only", "random-*", "--level", "2"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.output.starts_with("state:\n  random-calls  (level 2)\n      ")) << run.output;
    EXPECT_FALSE(contains(run.output, "\n  random-calls-with-refusals  ")) << run.output;
    EXPECT_TRUE(contains(validate({"--list", "--only", "random-*"}).output, "\n  random-calls-with-refusals  "));
}

TEST(ValidateCommand, AnEmptyListIsAUsageError) {
    const ProgramRun run = validate({"--list", "--only", "no-such-check"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors, "importhost: No check was selected: none up to level 10 fits 'no-such-check'.\n");
}

TEST(ValidateCommand, AnExplanationIsAboutThatCheck) {
    const ProgramRun run = validate({"--explain", "formats-end"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.output.starts_with("formats-end (level 1)\n  ")) << run.output;
    EXPECT_TRUE(contains(run.output, "imBadFormatIndex")) << run.output;
    EXPECT_FALSE(contains(run.output, "unknown-selectors")) << run.output;
}

TEST(ValidateCommand, ExplainingAnUnknownCheckIsAUsageError) {
    EXPECT_EQ(validate({"--explain", "no-such-check"}).exitCode, 2);
}

TEST(Checks, HaveAKebabCaseIdAndADescription) {
    for (const CheckGroup& group : checkGroups()) {
        for (const Check& check : group.checks) {
            EXPECT_EQ(check.id.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"), std::string_view::npos)
                << check.id;
            EXPECT_TRUE(check.description.ends_with('.')) << check.id;
            EXPECT_GE(check.description.size(), 60u) << check.id;
            EXPECT_TRUE(check.level >= 1 && check.level <= 10) << check.id;
        }
    }
}

}  // namespace
