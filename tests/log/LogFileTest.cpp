// The log of the loaded plug-in: when a file appears, how it begins and ends, and the form of its lines.
#include "log/PluginRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <thread>

namespace {

std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        files.push_back(entry.path());
    }
    return files;
}

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::filesystem::path outerFolder() { return hostkit::pluginLogFolder().parent_path(); }

// The raw lines of the only log file.
std::vector<std::string> rawLines() {
    const auto files = filesIn(hostkit::pluginLogFolder());
    return files.size() == 1 ? hostkit::readLogLines(files.front()) : std::vector<std::string>{};
}

TEST(LogFile, NothingIsCreatedWhileTheSwitchIsOff) {
    PluginRun run({}, false);
    run.session().start();
    run.session().shutdown();
    run.unload();
    EXPECT_FALSE(std::filesystem::exists(outerFolder()));
}

TEST(LogFile, LoadingCreatesNothing) {
    PluginRun run;
    EXPECT_FALSE(std::filesystem::exists(outerFolder()));
}

TEST(LogFile, UnloadingWithoutACallCreatesNothing) {
    PluginRun run;
    run.unload();
    EXPECT_FALSE(std::filesystem::exists(outerFolder()));
}

TEST(LogFile, TheFirstCallCreatesFoldersAndAFileNamedByTime) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    const auto files = filesIn(outerFolder() / "adobe");
    ASSERT_EQ(files.size(), 1u);
    EXPECT_TRUE(std::regex_match(files.front().filename().string(),
                                 std::regex("quorvane_pr_importer_[0-9]{8}_[0-9]{6}_00\\.log")))
        << files.front();
}

TEST(LogFile, TheTimeInTheNameIsTheTimeOfTheFirstLine) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    const auto files = filesIn(hostkit::pluginLogFolder());
    ASSERT_EQ(files.size(), 1u);
    const std::string name = files.front().filename().string().substr(21, 15);
    std::string first = rawLines().at(0).substr(1, 19);
    std::erase_if(first, [](char c) { return c == '-' || c == ':'; });
    std::replace(first.begin(), first.end(), ' ', '_');
    // The name is created first; the second may change before the line is written.
    EXPECT_LE(name, first);
    EXPECT_EQ(name.substr(0, 8), first.substr(0, 8));
}

TEST(LogFile, ExistingFoldersAreUsed) {
    PluginRun run;
    std::filesystem::create_directories(hostkit::pluginLogFolder());
    run.call(kSelectorWithoutHandler);
    EXPECT_EQ(filesIn(hostkit::pluginLogFolder()).size(), 1u);
}

TEST(LogFile, BeginsWithLogOpenedAndNeverSaysModuleInit) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    const std::vector<std::string> messages = run.messages();
    ASSERT_EQ(messages.size(), 5u);
    EXPECT_EQ(messages[0], "Log opened");
    EXPECT_EQ(messages[2], "----------------------");
    EXPECT_EQ(messages[3], "[imSelectClipFrameDescriptor] (65)");
    EXPECT_EQ(messages[4], "    [imUnsupported] (3)");
}

TEST(LogFile, TheSecondLineNamesTheHostsProgram) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    const std::string line = run.messages().at(1);
    ASSERT_TRUE(line.starts_with("Application: ")) << line;
    const std::filesystem::path program = line.substr(13);
    EXPECT_TRUE(program.is_absolute());
    EXPECT_EQ(program.stem(), "tests_log");
    EXPECT_TRUE(std::filesystem::equivalent(program.parent_path(), hostkit::PluginLibrary::programFolder()));
}

TEST(LogFile, UnloadingWritesModuleDestroyAndThenLogClosed) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    run.newMessages();
    run.unload();
    EXPECT_EQ(run.newMessages(), (std::vector<std::string>{"Module destroy", "Log closed"}));
}

TEST(LogFile, EveryLineBeginsWithTimeAndThreadNumber) {
    PluginRun run;
    run.session().start();
    const std::regex shape("\\[[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\] \\[[0-9]+\\] .+");
    const std::vector<std::string> lines = rawLines();
    ASSERT_GT(lines.size(), 170u);
    for (const std::string& line : lines) {
        EXPECT_TRUE(std::regex_match(line, shape)) << line;
    }
    run.session().shutdown();
}

TEST(LogFile, EachThreadHasItsOwnNumber) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    run.call(kSelectorWithoutHandler);
    std::thread([&run] { run.call(kSelectorWithoutHandler); }).join();
    std::vector<std::string> numbers;
    for (const std::string& line : rawLines()) {
        if (line.ends_with("----------------------")) {
            numbers.push_back(line.substr(22));
        }
    }
    ASSERT_EQ(numbers.size(), 3u);
    EXPECT_EQ(numbers[0], numbers[1]);
    EXPECT_NE(numbers[0], numbers[2]);
}

TEST(LogFile, LinesHaveTheSystemsLineEnds) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    const auto files = filesIn(hostkit::pluginLogFolder());
    ASSERT_EQ(files.size(), 1u);
    const std::string bytes = bytesOf(files.front());
    const auto lineFeeds = std::count(bytes.begin(), bytes.end(), '\n');
    const auto returns = std::count(bytes.begin(), bytes.end(), '\r');
    EXPECT_EQ(lineFeeds, 5);
#ifdef _WIN32
    EXPECT_EQ(returns, 5);
    EXPECT_TRUE(bytes.ends_with("    [imUnsupported] (3)\r\n"));
#else
    EXPECT_EQ(returns, 0);
    EXPECT_TRUE(bytes.ends_with("    [imUnsupported] (3)\n"));
#endif
}

TEST(LogFile, AMessageOfThousandsOfCharactersIsComplete) {
    PluginRun run;
    run.session().init();
    run.newMessages();
    const std::u16string path(20000, u'p');
    hostkit::HostRecord<imFileOpenRec8> record;
    record->fileinfo.filepath = path.c_str();
    imFileRef fileRef = imInvalidHandleValue();
    EXPECT_EQ(run.session().exchange(imOpenFile8, std::move(record), &fileRef).result, imBadFile);
    const std::string expected = "Open: '" + std::string(20000, 'p') + "', stream: 0";
    const std::vector<std::string> messages = run.newMessages();
    EXPECT_EQ(std::count(messages.begin(), messages.end(), expected), 1);
    run.session().shutdown();
}

TEST(LogFile, TheSwitchTurnedOffAfterTheFirstCallChangesNothing) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    run.newMessages();
    const hostkit::LogSwitch off(false);
    run.call(kSelectorWithoutHandler);
    EXPECT_EQ(run.newMessages().size(), 3u);
}

TEST(LogFile, TheSwitchTurnedOnAfterTheFirstCallChangesNothing) {
    PluginRun run({}, false);
    run.call(kSelectorWithoutHandler);
    const hostkit::LogSwitch on(true);
    run.call(kSelectorWithoutHandler);
    run.unload();
    EXPECT_FALSE(std::filesystem::exists(outerFolder()));
}

TEST(LogFile, EveryLoadReadsTheSwitchAgain) {
    PluginRun run({}, false);
    run.call(kSelectorWithoutHandler);
    run.unload();
    const hostkit::LogSwitch on(true);
    const hostkit::PluginLibrary again(pluginPath());
    again.entry()(kSelectorWithoutHandler, run.host().stdParms(), nullptr, nullptr);
    EXPECT_EQ(filesIn(hostkit::pluginLogFolder()).size(), 1u);
}

TEST(LogFile, LinesAreOnDiskAsSoonAsTheCallReturns) {
    PluginRun run;
    run.call(kSelectorWithoutHandler);
    const auto files = filesIn(hostkit::pluginLogFolder());
    ASSERT_EQ(files.size(), 1u);
    const std::string text = bytesOf(files.front());
    EXPECT_NE(text.find("    [imUnsupported] (3)"), std::string::npos);
}

}  // namespace
