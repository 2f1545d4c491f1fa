#include "hostkit/plugin/PluginLog.h"

#include "FakeClip.h"

using namespace hostkit;

namespace {

using Lines = std::vector<std::string>;

// A log file in the folder where the plug-in writes them.
class LogFile {
public:
    LogFile(const char* name, const std::string& content) : m_path(pluginLogFolder() / name) {
        std::filesystem::create_directories(pluginLogFolder());
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~LogFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

private:
    std::filesystem::path m_path;
};

TEST(LogSwitch, IsOnWhileItLives) {
    const LogSwitch off(false);
    EXPECT_FALSE(LogSwitch::isOn());
    {
        const LogSwitch on;
        EXPECT_TRUE(LogSwitch::isOn());
    }
    EXPECT_FALSE(LogSwitch::isOn());
}

TEST(LogSwitch, RestoresThePreviousState) {
    const LogSwitch on;
    {
        const LogSwitch off(false);
        EXPECT_FALSE(LogSwitch::isOn());
    }
    EXPECT_TRUE(LogSwitch::isOn());
}

TEST(PluginLog, SeesOnlyFilesThatAreNew) {
    const LogFile older("quorvane_pr_importer_19990101_000000_00.log", "old\r\n");
    const PluginLog log;
    EXPECT_EQ(log.lines(), Lines{});
    const LogFile newer("quorvane_pr_importer_19990101_000000_01.log", "new\r\n");
    EXPECT_EQ(log.lines(), Lines{"new"});
}

TEST(PluginLog, SkipsOtherFiles) {
    const PluginLog log;
    const LogFile other("notes.log", "x\r\n");
    EXPECT_EQ(log.newFiles().size(), 0u);
}

TEST(PluginLog, ReturnsMessagesWithoutTimeAndThread) {
    const PluginLog log;
    const LogFile file("quorvane_pr_importer_19990101_000000_00.log",
                       "[1999-01-01 00:00:00] [7212] Log opened\r\n[1999-01-01 00:00:00] [7212]     [imNoErr] (0)\n");
    EXPECT_EQ(log.messages(), (Lines{"Log opened", "    [imNoErr] (0)"}));
}

TEST(PluginLog, ALineWithoutItsPrefixStaysWhole) {
    EXPECT_EQ(withoutLogPrefix("[imInit] (0)"), "[imInit] (0)");
    EXPECT_EQ(withoutLogPrefix("text"), "text");
}

}  // namespace
