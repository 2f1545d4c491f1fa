// For tests of the log of a request: loads the plug-in for each test, with its log on.
#pragma once

#include "audio/support/ReferenceSound.h"
#include "audio/support/SoundClip.h"
#include "log/PluginRun.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

class LoggedSoundTest : public ::testing::Test {
protected:
    explicit LoggedSoundTest(hostkit::HostProfile profile = {}) : m_run(std::move(profile)) {}

    void SetUp() override { ASSERT_EQ(m_run.session().init().result, imNoErr); }

    // Fails the test if the plug-in or the test still hold anything: clips must be closed.
    void TearDown() override {
        EXPECT_EQ(m_run.session().shutdown(), imNoErr);
        EXPECT_EQ(m_run.host().problems(), Lines{});
    }

    hostkit::Host& host() { return m_run.host(); }
    hostkit::ImporterSession& session() { return m_run.session(); }

    // All lines of the calls that `action` makes.
    Lines logOf(const std::function<void()>& action) {
        m_run.newMessages();
        action();
        return m_run.newMessages();
    }

    // Those of one request that returns 0, without the first lines, about the file, and the last, with the result.
    Lines requestLog(SoundClip& clip, PrAudioSample position, csSDK_uint32 frames, csSDK_int32 channels = 2) {
        const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(position, frames, channels).result, imNoErr); });
        EXPECT_GE(lines.size(), 5u);
        EXPECT_EQ(lines.back(), "    [imNoErr] (0)");
        return {lines.begin() + 4, lines.end() - 1};
    }

    // The same without the first eight lines, which hold the values.
    Lines readingLog(SoundClip& clip, PrAudioSample position, csSDK_uint32 frames, csSDK_int32 channels = 2) {
        const Lines lines = requestLog(clip, position, frames, channels);
        EXPECT_GE(lines.size(), 8u);
        return {lines.begin() + 8, lines.end()};
    }

private:
    PluginRun m_run;
};
