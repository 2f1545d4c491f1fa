// Loads the plug-in in a host that has no costs of its own, and opens clips for requests.
#pragma once

#include "aviwriter/Sample.h"
#include "measured/MeasuredClip.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

class CostTest : public ::testing::Test {
protected:
    // 320 x 180 pixels at 25 frames per second with sound: the first track has chunks of 1920 sample frames, one for
    // each video frame.
    static constexpr csSDK_uint32 kChunkFrames = 1920;
    static aviwriter::SampleOptions clipWith(aviwriter::SampleFormat format, std::uint16_t channels) {
        return {.width = 320, .height = 180, .frames = 10, .audio = {{.format = format, .channels = channels}}};
    }
    static aviwriter::SampleOptions usualClip() { return clipWith(aviwriter::SampleFormat::float32, 2); }

    // All delivered frames must have been released.
    void TearDown() override {
        m_clip.reset();
        EXPECT_EQ(m_plugin.host().framesOut(), 0u);
    }

    MeasuredPlugin& plugin() { return m_plugin; }

    // The clip lives until the next one is opened.
    MeasuredClip& open(const aviwriter::SampleOptions& options = usualClip()) {
        m_clip.reset();
        const std::filesystem::path file = m_folder.folder() / ("clip" + std::to_string(m_files++) + ".avi");
        aviwriter::FileSink sink(file);
        aviwriter::writeSample(options, sink);
        sink.close();
        m_clip = std::make_unique<MeasuredClip>(m_plugin, file, 4 * kChunkFrames);
        return *m_clip;
    }

private:
    TempFolder m_folder;
    MeasuredPlugin m_plugin{320 * 180 * 8};
    std::unique_ptr<MeasuredClip> m_clip;
    int m_files = 0;
};
