// Writes a complete sample file in one call: the test picture, compressed by the stand-in codec's encoder, and test
// sound, interleaved in an AVI file. The same options produce the same bytes on every system.
#pragma once

#include "aviwriter/AviFileWriter.h"
#include "aviwriter/TestSound.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace aviwriter {

struct SampleAudio {
    SampleFormat format = SampleFormat::pcm16;
    std::uint16_t channels = 2;
    std::uint32_t sampleRate = 48000;
    WaveRecord record = WaveRecord::ex18;
    std::uint32_t channelMask = 0;                 // written if the record has a field for it
    std::optional<std::uint32_t> chunkFrames{};    // sample frames per chunk (default: one chunk per video frame)
};

struct SampleOptions {
    std::uint32_t type = 104;                      // compressed type number
    std::uint32_t width = 320;
    std::uint32_t height = 180;
    std::uint32_t frames = 25;
    std::uint32_t rate = 25;                       // rate / scale frames per second
    std::uint32_t scale = 1;
    std::uint32_t colorSpace = 2;                  // 1 Rec.601, 2 Rec.709
    std::optional<std::uint32_t> range{};          // 1 limited, 2 full (default: full for RGB, else limited)
    std::string handler = "QVAN";
    bool hasVideo = true;                          // false: only sound, as long as the video would be
    FileLayout layout{};
    std::vector<SampleAudio> audio{};
    std::set<std::uint32_t> dropped{};             // frames that are written empty
    std::uint64_t hole = 0;                        // bytes skipped before the second half of the frames
};

// Writes the whole file. Throws std::invalid_argument for invalid options, and the exceptions of AviFileWriter.
void writeSample(const SampleOptions& options, ByteSink& sink);

// Writes the file to memory.
Bytes sampleBytes(const SampleOptions& options);

}  // namespace aviwriter
