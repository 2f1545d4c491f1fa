#include "aviwriter/TestSound.h"

#include <bit>

namespace aviwriter {

namespace {

constexpr std::uint32_t kLowestPitch = 220;      // Hz
constexpr std::uint32_t kPitchStep = 110;        // Hz between channels
constexpr std::uint32_t kTicksLongInverse = 200; // the click lasts 1/200 s
constexpr std::int32_t kTickLevel = 0x70000000;

// Sine of phase / 2^32 of a turn, times 2^30. A polynomial of seventh order per quarter turn, with an error below
// 0.00001: accurate enough to hear and measure, and the same with every mathematics library.
std::int64_t sine(std::uint32_t phase) {
    std::int64_t z = static_cast<std::int32_t>(phase);          // -2^31 ... 2^31 is half a turn in each direction
    constexpr std::int64_t quarter = std::int64_t{1} << 30;
    if (z > quarter) {
        z = 2 * quarter - z;
    } else if (z < -quarter) {
        z = -2 * quarter - z;
    }
    // Value, slope and curvature at the peak, and the slope at zero, are exact; times 2^30.
    constexpr std::int64_t a = 1686629713;
    constexpr std::int64_t b = 693437629;
    constexpr std::int64_t c = 85082503;
    constexpr std::int64_t d = 4532763;
    const std::int64_t square = z * z / quarter;
    return z * (a - square * (b - square * (c - square * d / quarter) / quarter) / quarter) / quarter;
}

// The sample in the highest bits of its format.
std::uint32_t encoded(SampleFormat format, std::int32_t sample) {
    switch (format) {
        case SampleFormat::pcm8: return static_cast<std::uint32_t>(sample) ^ 0x80000000U;
        case SampleFormat::float32:
            return std::bit_cast<std::uint32_t>(static_cast<float>(sample) / 2147483648.0F);
        default: return static_cast<std::uint32_t>(sample);
    }
}

}  // namespace

std::uint16_t bitsPerSample(SampleFormat format) {
    switch (format) {
        case SampleFormat::pcm8: return 8;
        case SampleFormat::pcm16: return 16;
        case SampleFormat::pcm24: return 24;
        case SampleFormat::pcm32:
        case SampleFormat::float32: return 32;
    }
    return 0;
}

std::int32_t testSample(std::uint16_t channel, std::uint64_t position, std::uint32_t sampleRate) {
    const std::uint64_t inSecond = position % sampleRate;       // every pitch has a whole number of turns per second
    if (inSecond < sampleRate / kTicksLongInverse) {
        return inSecond / 4 % 2 == 0 ? kTickLevel : -kTickLevel;
    }
    const std::uint64_t pitch = kLowestPitch + std::uint64_t{kPitchStep} * channel;
    const auto phase = static_cast<std::uint32_t>(((inSecond * pitch % sampleRate) << 32) / sampleRate);
    return static_cast<std::int32_t>(sine(phase));
}

Bytes testSound(SampleFormat format, std::uint16_t channels, std::uint32_t sampleRate, std::uint64_t position,
                std::uint32_t count) {
    const unsigned bits = bitsPerSample(format);
    Bytes sound(std::size_t{count} * channels * bits / 8);
    auto next = sound.begin();
    for (std::uint64_t frame = position; frame < position + count; ++frame) {
        for (std::uint16_t channel = 0; channel < channels; ++channel) {
            const std::uint32_t sample = encoded(format, testSample(channel, frame, sampleRate));
            for (unsigned shift = 32 - bits; shift < 32; shift += 8) {
                *next++ = static_cast<std::uint8_t>(sample >> shift);
            }
        }
    }
    return sound;
}

}  // namespace aviwriter
