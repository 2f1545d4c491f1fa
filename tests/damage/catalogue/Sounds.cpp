#include "damage/catalogue/Sounds.h"

#include <cstring>

namespace damage {

using aviwriter::Bytes;

namespace {

// Each pair of channels has its own range in a long count, each channel of a pair its own sign, and each stream its own
// range in addition to those of the channels.
std::uint32_t count(std::uint32_t sampleFrame, std::uint32_t channel, std::uint32_t stream) {
    return sampleFrame + 601 * (channel / 2) + 31 * stream;
}

int signedBy(std::uint32_t channel, std::uint32_t value) {
    return channel % 2 == 0 ? static_cast<int>(value) : -static_cast<int>(value);
}

std::uint32_t bitsOf(SoundType type) {
    switch (type) {
    case SoundType::int8: return 8;
    case SoundType::int16: return 16;
    case SoundType::int24: return 24;
    default: return 32;
    }
}

// The sample's bits in a file, in the low bits.
std::uint32_t writtenBits(const SoundShape& shape, std::uint32_t sampleFrame, std::uint32_t channel) {
    if (shape.type == SoundType::int8) {
        return static_cast<std::uint32_t>(128 + soundSample8(sampleFrame, channel, shape.stream));
    }
    if (shape.type == SoundType::float32) {
        const float heard = soundHeard(shape, sampleFrame, channel);
        std::uint32_t bits = 0;
        std::memcpy(&bits, &heard, sizeof bits);
        return bits;
    }
    const auto sample = static_cast<std::uint16_t>(soundSample(sampleFrame, channel, shape.stream));
    return std::uint32_t{sample} << (bitsOf(shape.type) - 16);
}

}  // namespace

std::int16_t soundSample(std::uint32_t sampleFrame, std::uint32_t channel, std::uint32_t stream) {
    return static_cast<std::int16_t>(signedBy(channel, 1 + count(sampleFrame, channel, stream) % 30'000));
}

std::int8_t soundSample8(std::uint32_t sampleFrame, std::uint32_t channel, std::uint32_t stream) {
    return static_cast<std::int8_t>(signedBy(channel, 1 + count(sampleFrame, channel, stream) % 127));
}

float soundHeard(const SoundShape& shape, std::uint32_t sampleFrame, std::uint32_t channel) {
    if (shape.type == SoundType::int8) {
        return static_cast<float>(soundSample8(sampleFrame, channel, shape.stream)) / 128.0f;
    }
    return static_cast<float>(soundSample(sampleFrame, channel, shape.stream)) / 32768.0f;
}

float soundOfGaps(SoundType type) { return type == SoundType::int8 ? -1.0f : 0.0f; }

Bytes soundFormat(const SoundShape& shape) {
    return aviwriter::waveFormatEx({.formatTag = shape.type == SoundType::float32 ? aviwriter::kWaveFormatFloat
                                                                                  : aviwriter::kWaveFormatPcm,
                                    .channels = static_cast<std::uint16_t>(shape.channels),
                                    .bitsPerSample = static_cast<std::uint16_t>(bitsOf(shape.type))});
}

Bytes soundData(const SoundShape& shape, std::uint32_t first, std::uint32_t frames) {
    Bytes data;
    data.reserve(std::size_t{frames} * shape.channels * bitsOf(shape.type) / 8);
    for (std::uint32_t i = first; i < first + frames; ++i) {
        for (std::uint32_t channel = 0; channel < shape.channels; ++channel) {
            const std::uint32_t bits = writtenBits(shape, i, channel);
            for (std::uint32_t byte = 0; byte < bitsOf(shape.type) / 8; ++byte) {
                data.push_back(static_cast<std::uint8_t>(bits >> (8 * byte)));
            }
        }
    }
    return data;
}

}  // namespace damage
