// The samples that the host must receive, worked out from a sound's bytes without the plug-in.
#pragma once

#include "audio/support/SoundClip.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

// The bits of 32-bit floats, by channel, so that NaNs compare and zeros have signs.
using SampleBits = std::vector<std::vector<std::uint32_t>>;

// Sample frames [position, position + frames) of `sound`. Bytes past its end count as zero: silence, or the lowest
// sample if samples are unsigned.
SampleBits referenceSound(const SoundFormat& format, const Bytes& sound, std::uint64_t position, std::uint32_t frames);

// `frames` equal samples in each channel.
SampleBits constantSound(float value, std::size_t channels, std::size_t frames);

SampleBits bitsOf(const hostkit::AudioAnswer& answer);

// Succeeds if the request succeeded with exactly these samples; otherwise names the first one that differs.
::testing::AssertionResult holds(const hostkit::AudioAnswer& answer, const SampleBits& expected);
