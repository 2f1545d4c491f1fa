// The sound of damaged files: a sample identifies its stream, its channel and its position, and is never silence.
#pragma once

#include "aviwriter/Blocks.h"

#include <cstdint>

namespace damage {

enum class SoundType { int8, int16, int24, int32, float32 };

struct SoundShape {
    SoundType type = SoundType::int16;
    std::uint32_t channels = 2;
    std::uint32_t stream = 0;           // counted among the file's sound streams
};

// "strf" data for this shape, at 48000 samples per second.
aviwriter::Bytes soundFormat(const SoundShape& shape);

// `count` sample frames from `first` on, as stored in the file.
aviwriter::Bytes soundData(const SoundShape& shape, std::uint32_t first, std::uint32_t count);

// The sample as 16 bits; as 8 bits, which is another signal, because the upper half of the first would have long
// silences; and as the host receives it.
std::int16_t soundSample(std::uint32_t sampleFrame, std::uint32_t channel, std::uint32_t stream = 0);
std::int8_t soundSample8(std::uint32_t sampleFrame, std::uint32_t channel, std::uint32_t stream = 0);
float soundHeard(const SoundShape& shape, std::uint32_t sampleFrame, std::uint32_t channel);

// What the host receives in place of missing samples. Samples of 8 bits are unsigned in the file, and the zeros that
// fill a gap become the lowest value.
float soundOfGaps(SoundType type);

}  // namespace damage
