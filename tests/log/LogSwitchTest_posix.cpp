// The log switch of the native build, and a user without a profile folder.
#include "log/PluginRun.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr char kSwitch[] = "QUORVANE_ENABLE_ADOBE_LOG";

// Whether loading and calling the plug-in writes a log with the current switch.
bool callWritesALog(hostkit::Host& host) {
    const ProfileSandbox sandbox;
    {
        const hostkit::PluginLibrary plugin(pluginPath());
        plugin.entry()(kSelectorWithoutHandler, host.stdParms(), nullptr, nullptr);
    }
    return std::filesystem::exists(sandbox.outerFolder());
}

class LogSwitchVariable : public testing::Test {
protected:
    hostkit::LogSwitch m_saved{false};   // restores the variable afterwards
    hostkit::Host m_host;
};

TEST_F(LogSwitchVariable, IsOffWhenMissing) { EXPECT_FALSE(callWritesALog(m_host)); }

TEST_F(LogSwitchVariable, IsOffWhenEmpty) {
    setenv(kSwitch, "", 1);
    EXPECT_FALSE(callWritesALog(m_host));
}

TEST_F(LogSwitchVariable, IsOffWhenZero) {
    setenv(kSwitch, "0", 1);
    EXPECT_FALSE(callWritesALog(m_host));
}

TEST_F(LogSwitchVariable, IsOnWhenOne) {
    setenv(kSwitch, "1", 1);
    EXPECT_TRUE(callWritesALog(m_host));
}

TEST_F(LogSwitchVariable, IsOnForAnyOtherText) {
    setenv(kSwitch, "yes", 1);
    EXPECT_TRUE(callWritesALog(m_host));
}

// The log is on, but the user has no profile folder.
class LogWithoutProfile : public testing::Test {
protected:
    LogWithoutProfile() : m_run(), m_home(std::getenv("HOME")) { unsetenv("HOME"); }
    ~LogWithoutProfile() override { setenv("HOME", m_home.c_str(), 1); }

    PluginRun m_run;
    std::filesystem::path m_home;
};

TEST_F(LogWithoutProfile, CallsSucceed) {
    EXPECT_EQ(m_run.session().init().result, imNoErr);
    EXPECT_EQ(m_run.call(kSelectorWithoutHandler), imUnsupported);
    EXPECT_EQ(m_run.host().errorEvents(), std::vector<hostkit::ErrorEvent>{});
    m_run.session().shutdown();
    EXPECT_EQ(m_run.host().problems(), std::vector<std::string>{});
}

TEST_F(LogWithoutProfile, NothingIsCreatedInTheWorkingFolder) {
    m_run.call(kSelectorWithoutHandler);
    m_run.unload();
    EXPECT_FALSE(std::filesystem::exists("quorvane"));
    EXPECT_FALSE(std::filesystem::exists("/quorvane"));
}

TEST_F(LogWithoutProfile, AnEmptyHomeCountsAsNone) {
    setenv("HOME", "", 1);
    m_run.call(kSelectorWithoutHandler);
    m_run.unload();
    EXPECT_FALSE(std::filesystem::exists("quorvane"));
    EXPECT_FALSE(std::filesystem::exists("/quorvane"));
}

TEST_F(LogWithoutProfile, OpeningIsTriedOnlyOnce) {
    m_run.call(kSelectorWithoutHandler);
    setenv("HOME", m_home.c_str(), 1);
    m_run.call(kSelectorWithoutHandler);
    m_run.unload();
    EXPECT_FALSE(std::filesystem::exists(m_home / "quorvane"));
}

TEST_F(LogWithoutProfile, AFileInPlaceOfTheFolderIsIgnoredToo) {
    setenv("HOME", "/dev/null", 1);
    EXPECT_EQ(m_run.call(kSelectorWithoutHandler), imUnsupported);
    m_run.unload();
}

}  // namespace
