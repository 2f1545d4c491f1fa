// Test sound to check by ear and by numbers: a sine per channel, each at its own pitch, and a click at every full
// second.
#pragma once

#include "aviwriter/Blocks.h"

#include <cstdint>

namespace aviwriter {

enum class SampleFormat { pcm8, pcm16, pcm24, pcm32, float32 };

std::uint16_t bitsPerSample(SampleFormat format);

// The sample of one channel (from 0) at a position in sample frames, as a signed 32-bit fraction of full scale. Channel
// c has 220 + 110 c Hz at half of full scale; the first 5 ms of every second are a click at nearly full scale. Integer
// arithmetic only: the same samples on every system.
std::int32_t testSample(std::uint16_t channel, std::uint64_t position, std::uint32_t sampleRate);

// `count` sample frames from `position`, channels interleaved as in an AVI chunk: 8 bits unsigned, wider integers
// signed (narrower ones drop the lowest bits), float in -1 ... 1.
Bytes testSound(SampleFormat format, std::uint16_t channels, std::uint32_t sampleRate, std::uint64_t position,
                std::uint32_t count);

}  // namespace aviwriter
