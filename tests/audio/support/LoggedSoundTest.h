// For tests of what the plug-in logs of a request: the plug-in loaded afresh, with its log switched on.
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

    // What the plug-in and the test still hold fails the test: clips must have ended.
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

    // Those of one request that answers 0, between the two lines that tell of the file and the result's.
    Lines requestLog(SoundClip& clip, PrAudioSample position, csSDK_uint32 frames, csSDK_int32 channels = 2) {
        const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(position, frames, channels).result, imNoErr); });
        EXPECT_GE(lines.size(), 5u);
        EXPECT_EQ(lines.back(), "    [imNoErr] (0)");
        return {lines.begin() + 4, lines.end() - 1};
    }

    // The same without the eight lines of values that begin it.
    Lines readingLog(SoundClip& clip, PrAudioSample position, csSDK_uint32 frames, csSDK_int32 channels = 2) {
        const Lines lines = requestLog(clip, position, frames, channels);
        EXPECT_GE(lines.size(), 8u);
        return {lines.begin() + 8, lines.end()};
    }

private:
    PluginRun m_run;
};
