// The log switch in the registry: a value of at most four bytes counts by its bytes, whatever its type.
#include "log/PluginRun.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>

namespace {

constexpr char kKey[] = "Software\\Quorvane";
constexpr char kValue[] = "EnableAdobeLog";

void setValue(DWORD type, const void* data, std::size_t size) {
    ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, kKey, kValue, type, data, static_cast<DWORD>(size)), ERROR_SUCCESS);
}

void setNumber(DWORD number) { setValue(REG_DWORD, &number, sizeof number); }

void setText(const char* text) { setValue(REG_SZ, text, std::strlen(text) + 1); }

void setBytes(std::initializer_list<unsigned char> bytes) { setValue(REG_BINARY, std::data(bytes), bytes.size()); }

bool callWritesALog(hostkit::Host& host) {
    const ProfileSandbox sandbox;
    {
        const hostkit::PluginLibrary plugin(pluginPath());
        EXPECT_EQ(plugin.entry()(kSelectorWithoutHandler, host.stdParms(), nullptr, nullptr), imUnsupported);
    }
    return std::filesystem::exists(sandbox.outerFolder());
}

class LogSwitchValue : public testing::Test {
protected:
    // The key must exist when m_saved restores the value.
    ~LogSwitchValue() override {
        HKEY key = nullptr;
        if (RegCreateKeyA(HKEY_CURRENT_USER, kKey, &key) == ERROR_SUCCESS) {
            RegCloseKey(key);
        }
    }

    hostkit::LogSwitch m_saved{false};   // the key without the value
    hostkit::Host m_host;
};

TEST_F(LogSwitchValue, IsOffWithoutTheKey) {
    ASSERT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, kKey), ERROR_SUCCESS);
    EXPECT_FALSE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOffWithoutTheValue) { EXPECT_FALSE(callWritesALog(m_host)); }

TEST_F(LogSwitchValue, IsOffForTheNumberZero) {
    setNumber(0);
    EXPECT_FALSE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOnForTheNumberOne) {
    setNumber(1);
    EXPECT_TRUE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOnForANumberWhoseLowByteIsZero) {
    setNumber(0x01000000);
    EXPECT_TRUE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOnForTheTextZero) {
    setText("0");
    EXPECT_TRUE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOnForAThreeCharacterText) {
    setText("yes");
    EXPECT_TRUE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOffForATextLongerThanFourBytes) {
    setText("true");
    EXPECT_FALSE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOffForAnEmptyText) {
    setText("");
    EXPECT_FALSE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOnForASingleByte) {
    setBytes({1});
    EXPECT_TRUE(callWritesALog(m_host));
}

TEST_F(LogSwitchValue, IsOffForEightBytes) {
    setBytes({1, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_FALSE(callWritesALog(m_host));
}

}  // namespace
