// What the host must receive of a sound, worked out from its bytes without the plug-in.
#pragma once

#include "audio/support/SoundClip.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

// The bits of 32-bit floats, channel by channel: NaNs compare, and zero has a sign.
using SampleBits = std::vector<std::vector<std::uint32_t>>;

// Sample frames [position, position + frames) of `sound`. What lies beyond its end counts as zero bytes: silence, but
// the lowest sample where samples are unsigned.
SampleBits referenceSound(const SoundFormat& format, const Bytes& sound, std::uint64_t position, std::uint32_t frames);

// So many equal samples in each channel.
SampleBits constantSound(float value, std::size_t channels, std::size_t frames);

SampleBits bitsOf(const hostkit::AudioAnswer& answer);

// Whether the request succeeded with exactly these samples; names the first one that differs.
::testing::AssertionResult holds(const hostkit::AudioAnswer& answer, const SampleBits& expected);
