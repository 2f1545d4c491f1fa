// The plug-in in a host that costs nothing, and clips to ask it for frames and sound.
#pragma once

#include "aviwriter/Sample.h"
#include "measured/MeasuredClip.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

class CostTest : public ::testing::Test {
protected:
    // 320 x 180 pixels at 25 frames per second with sound: in the first track 1920 sample frames a chunk, one for each
    // video frame.
    static constexpr csSDK_uint32 kChunkFrames = 1920;
    static aviwriter::SampleOptions clipWith(aviwriter::SampleFormat format, std::uint16_t channels) {
        return {.width = 320, .height = 180, .frames = 10, .audio = {{.format = format, .channels = channels}}};
    }
    static aviwriter::SampleOptions usualClip() { return clipWith(aviwriter::SampleFormat::float32, 2); }

    // What was delivered has been given back.
    void TearDown() override {
        m_clip.reset();
        EXPECT_EQ(m_plugin.host().framesOut(), 0u);
    }

    MeasuredPlugin& plugin() { return m_plugin; }

    // Lives until the next one is opened.
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
