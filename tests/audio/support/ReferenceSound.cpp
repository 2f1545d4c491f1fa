#include "audio/support/ReferenceSound.h"

#include <bit>
#include <cmath>

namespace {

// Reads little-endian bytes; those past the end are zero.
std::uint32_t valueAt(const Bytes& sound, std::uint64_t position, unsigned byteCount) {
    std::uint32_t value = 0;
    for (unsigned i = 0; i < byteCount && position + i < sound.size(); ++i) {
        value |= std::uint32_t{sound[static_cast<std::size_t>(position + i)]} << (8 * i);
    }
    return value;
}

std::uint32_t hostBits(aviwriter::SampleFormat samples, std::uint32_t value) {
    if (samples == aviwriter::SampleFormat::float32) {
        return value;
    }
    const int bits = aviwriter::bitsPerSample(samples);
    const std::int64_t half = std::int64_t{1} << (bits - 1);
    std::int64_t number = value;
    if (samples == aviwriter::SampleFormat::pcm8) {
        number -= half;
    } else if (number >= half) {
        number -= 2 * half;
    }
    return std::bit_cast<std::uint32_t>(static_cast<float>(std::ldexp(static_cast<double>(number), 1 - bits)));
}

}  // namespace

SampleBits referenceSound(const SoundFormat& format, const Bytes& sound, std::uint64_t position,
                          std::uint32_t frames) {
    const unsigned sampleBytes = aviwriter::bitsPerSample(format.samples) / 8u;
    SampleBits channels(format.channels);
    for (std::uint64_t frame = position; frame < position + frames; ++frame) {
        for (std::uint16_t channel = 0; channel < format.channels; ++channel) {
            const std::uint64_t at = frame * frameBytes(format) + std::uint64_t{channel} * sampleBytes;
            channels[channel].push_back(hostBits(format.samples, valueAt(sound, at, sampleBytes)));
        }
    }
    return channels;
}

SampleBits constantSound(float value, std::size_t channels, std::size_t frames) {
    return SampleBits(channels, std::vector<std::uint32_t>(frames, std::bit_cast<std::uint32_t>(value)));
}

SampleBits bitsOf(const hostkit::AudioAnswer& answer) {
    SampleBits channels;
    for (const std::vector<float>& samples : answer.channels) {
        std::vector<std::uint32_t> bits;
        for (const float& sample : samples) {
            bits.push_back(std::bit_cast<std::uint32_t>(sample));
        }
        channels.push_back(bits);
    }
    return channels;
}

::testing::AssertionResult holds(const hostkit::AudioAnswer& answer, const SampleBits& expected) {
    if (answer.result != imNoErr) {
        return ::testing::AssertionFailure() << "the request failed with " << answer.result;
    }
    const SampleBits delivered = bitsOf(answer);
    if (delivered.size() != expected.size()) {
        return ::testing::AssertionFailure() << delivered.size() << " channels instead of " << expected.size();
    }
    for (std::size_t channel = 0; channel < expected.size(); ++channel) {
        for (std::size_t frame = 0; frame < expected[channel].size(); ++frame) {
            const std::uint32_t is = delivered[channel].at(frame);
            const std::uint32_t wanted = expected[channel][frame];
            if (is != wanted) {
                return ::testing::AssertionFailure() << "channel " << channel << ", frame " << frame << ": 0x"
                                                     << std::hex << is << " instead of 0x" << wanted;
            }
        }
    }
    return ::testing::AssertionSuccess();
}
