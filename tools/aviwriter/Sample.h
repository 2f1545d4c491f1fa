// A complete sample file in one call: the test picture, compressed by the stand-in codec's encoder, and test sound,
// interleaved into an AVI file. The same options give the same bytes on every system.
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
    std::uint32_t channelMask = 0;                 // written where the record has room for it
    std::optional<std::uint32_t> chunkFrames{};    // sample frames per chunk; else one chunk for each video frame
};

struct SampleOptions {
    std::uint32_t type = 104;                      // compressed type number
    std::uint32_t width = 320;
    std::uint32_t height = 180;
    std::uint32_t frames = 25;
    std::uint32_t rate = 25;                       // rate / scale frames per second
    std::uint32_t scale = 1;
    std::uint32_t colorSpace = 2;                  // 1 Rec.601, 2 Rec.709
    std::optional<std::uint32_t> range{};          // 1 limited, 2 full; else full for RGB types, limited for others
    std::string handler = "QVAN";
    bool hasVideo = true;                          // false: sound alone, as long as the video would be
    FileLayout layout{};
    std::vector<SampleAudio> audio{};
    std::set<std::uint32_t> dropped{};             // frames that are written empty
    std::uint64_t hole = 0;                        // bytes skipped before the second half of the frames
};

// Writes the whole file. Throws std::invalid_argument for options that make no file, and what AviFileWriter throws.
void writeSample(const SampleOptions& options, ByteSink& sink);

// The file in memory.
Bytes sampleBytes(const SampleOptions& options);

}  // namespace aviwriter
