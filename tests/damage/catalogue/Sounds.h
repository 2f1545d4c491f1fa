// The sound of damaged files: a sample tells its stream, its channel and its place, and is never silence.
#pragma once

#include "aviwriter/Blocks.h"

#include <cstdint>

namespace damage {

enum class SoundType { int8, int16, int24, int32, float32 };

struct SoundShape {
    SoundType type = SoundType::int16;
    std::uint32_t channels = 2;
    std::uint32_t stream = 0;           // counts the file's sound streams alone
};

// "strf" data that says so, at 48000 samples a second.
aviwriter::Bytes soundFormat(const SoundShape& shape);

// So many sample frames from `first` on, as they stand in the file.
aviwriter::Bytes soundData(const SoundShape& shape, std::uint32_t first, std::uint32_t count);

// The sample as 16 bits; as 8 bits, which is another signal, because the upper half of the first would be silent for
// long; and as the host hears it.
std::int16_t soundSample(std::uint32_t sampleFrame, std::uint32_t channel, std::uint32_t stream = 0);
std::int8_t soundSample8(std::uint32_t sampleFrame, std::uint32_t channel, std::uint32_t stream = 0);
float soundHeard(const SoundShape& shape, std::uint32_t sampleFrame, std::uint32_t channel);

// What the host hears in the place of samples that are not there. Samples of 8 bits have no sign in the file, and the
// zeros that fill a gap become the lowest value.
float soundOfGaps(SoundType type);

}  // namespace damage
