// The log call, tested without the plug-in.
#include "log/Log.h"
#include "log/ProfileSandbox.h"

#include "hostkit/plugin/PluginLog.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <map>
#include <thread>

namespace {

constexpr char kName[] = "log_line_test";

// The defaults, read before any test runs: those of a module that has not configured its log.
const std::string nameAtStart = logSettings.name;
const bool enabledAtStart = LogEnabled();
const bool consoleAtStart = logSettings.console;

class LogLine : public testing::Test {
protected:
    LogLine() { ConfigureLog(kName, true, false); }
    ~LogLine() override {
        CloseLog();
        ConfigureLog(kName, false, false);
    }

    std::vector<std::filesystem::path> files() const {
        std::vector<std::filesystem::path> found;
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator(m_sandbox.logFolder(), missing)) {
            found.push_back(entry.path());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    std::vector<std::string> messages() const {
        std::vector<std::string> all;
        for (const auto& file : files()) {
            for (const std::string& line : hostkit::readLogLines(file)) {
                all.emplace_back(hostkit::withoutLogPrefix(line));
            }
        }
        return all;
    }

    ProfileSandbox m_sandbox;
};

TEST_F(LogLine, TheDefaultsAreOffWithoutConsoleAndAGenericName) {
    EXPECT_FALSE(enabledAtStart);
    EXPECT_FALSE(consoleAtStart);
    EXPECT_EQ(nameAtStart, "quorvane_pr");
}

TEST_F(LogLine, ALogThatIsOffEvaluatesNoArgument) {
    ConfigureLog(kName, false, false);
    int counter = 0;
    Log("%d", counter++);
    EXPECT_EQ(counter, 0);
}

TEST_F(LogLine, ALogThatIsOnEvaluatesItsArgumentsOnce) {
    int counter = 0;
    Log("%d", counter++);
    EXPECT_EQ(counter, 1);
}

TEST_F(LogLine, ALogThatIsOffCreatesNothing) {
    ConfigureLog(kName, false, false);
    Log("not written");
    EXPECT_FALSE(std::filesystem::exists(m_sandbox.outerFolder()));
}

TEST_F(LogLine, FilesAreNamedAfterTheLog) {
    Log("a line");
    ASSERT_EQ(files().size(), 1u);
    EXPECT_TRUE(files().front().filename().string().starts_with("log_line_test_"));
}

TEST_F(LogLine, ArgumentsAreNotFormatStrings) {
    Log("%s", "100%d %s %n");
    EXPECT_EQ(messages().back(), "100%d %s %n");
}

TEST_F(LogLine, AnEmptyMessageStillWritesALine) {
    Log("%s", "");
    EXPECT_EQ(messages().back(), "");
}

TEST_F(LogLine, AMessageOfAMillionCharactersIsComplete) {
    const std::string text = "begin" + std::string(1000000, 'x') + "end";
    Log("%s", text.c_str());
    EXPECT_EQ(messages().back(), text);
}

// Lengths around the size of a line's buffer.
TEST_F(LogLine, MessagesOfEveryLengthAreComplete) {
    for (std::size_t length = 1; length <= 300; ++length) {
        Log("%s", std::string(length, 'y').c_str());
    }
    const std::vector<std::string> lines = messages();
    ASSERT_EQ(lines.size(), 302u);
    for (std::size_t length = 1; length <= 300; ++length) {
        EXPECT_EQ(lines[length + 1], std::string(length, 'y'));
    }
}

TEST_F(LogLine, LinesOfSeveralThreadsNeverMix) {
    constexpr int kLines = 200;
    constexpr std::size_t kLength = 5000;
    Log("first line");   // so that one thread opens the file
    std::array<std::thread, 4> threads;
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads[i] = std::thread([i] {
            const std::string text(kLength, static_cast<char>('a' + i));
            for (int line = 0; line < kLines; ++line) {
                Log("%s", text.c_str());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::map<std::string, int> counts;
    for (const std::string& message : messages()) {
        ++counts[message];
    }
    for (std::size_t i = 0; i < threads.size(); ++i) {
        EXPECT_EQ(counts[std::string(kLength, static_cast<char>('a' + i))], kLines);
    }
    EXPECT_EQ(messages().size(), 3u + threads.size() * kLines);
}

TEST_F(LogLine, HasTheUsersLocalTime) {
    const EnvironmentVariable zone("TZ", "QVT-5");   // UTC+5
    const auto stamp = [] {
        const std::time_t there = std::time(nullptr) + 5 * 3600;
        char text[32];
        return std::string(text, std::strftime(text, sizeof text, "[%Y-%m-%d %H:%M:%S]", std::gmtime(&there)));
    };
    const std::string before = stamp();
    Log("a line");
    const std::string line = hostkit::readLogLines(files().front()).back();
    EXPECT_LE(before, line.substr(0, before.size()));
    EXPECT_GE(stamp(), line.substr(0, before.size()));
}

TEST_F(LogLine, ClosingWritesTheLastLine) {
    Log("a line");
    CloseLog();
    EXPECT_EQ(messages().size(), 4u);
    EXPECT_EQ(messages().back(), "Log closed");
}

TEST_F(LogLine, ClosingAnUnusedLogCreatesNothing) {
    CloseLog();
    EXPECT_FALSE(std::filesystem::exists(m_sandbox.outerFolder()));
}

TEST_F(LogLine, ALineAfterClosingOpensANewFile) {
    Log("one");
    CloseLog();
    Log("two");
    CloseLog();
    ASSERT_EQ(files().size(), 2u);
    const std::vector<std::string> second = hostkit::readLogLines(files().back());
    ASSERT_EQ(second.size(), 4u);
    EXPECT_EQ(hostkit::withoutLogPrefix(second[0]), "Log opened");
    EXPECT_EQ(hostkit::withoutLogPrefix(second[2]), "two");
}

TEST_F(LogLine, ReadingADisabledSwitchTurnsNothingOff) {
    const hostkit::LogSwitch off(false);
    ReadLogSwitch();
    EXPECT_TRUE(LogEnabled());
}

}  // namespace
