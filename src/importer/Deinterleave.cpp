#include "importer/Deinterleave.h"

#include <algorithm>
#include <cstring>

namespace {

// Frames that are copied for one channel after the other: their bytes stay in the processor's cache meanwhile.
constexpr std::uint32_t kBlockFrames = 1024;

constexpr std::size_t kSampleBytes = 4;

// Whole frames [from, to).
void copyFrames(const std::uint8_t* bytes, float* const* buffers, std::uint32_t channels, std::uint32_t from,
                std::uint32_t to) {
    const std::size_t frameBytes = channels * kSampleBytes;
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        const std::uint8_t* source = bytes + from * frameBytes + channel * kSampleBytes;
        float* out = buffers[channel];
        for (std::uint32_t frame = from; frame < to; ++frame, source += frameBytes) {
            std::memcpy(out + frame, source, kSampleBytes);   // as bits: a signalling NaN stays what it is
        }
    }
}

}  // namespace

void deinterleave32(const std::uint8_t* bytes, std::size_t byteCount, float* const* buffers, std::uint32_t channels,
                    std::uint32_t frames) {
    if (channels == 0) {
        return;
    }
    const std::size_t samples = byteCount / kSampleBytes;
    const auto whole = static_cast<std::uint32_t>(std::min<std::size_t>(samples / channels, frames));
    if (channels == 1 && whole != 0) {
        std::memcpy(buffers[0], bytes, whole * kSampleBytes);
    } else {
        for (std::uint32_t from = 0; from < whole; from += kBlockFrames) {
            copyFrames(bytes, buffers, channels, from, std::min(whole, from + kBlockFrames));
        }
    }
    if (whole == frames) {
        return;
    }
    silence(buffers, channels, whole, frames);
    for (std::size_t sample = std::size_t{whole} * channels; sample < samples; ++sample) {
        std::memcpy(buffers[sample % channels] + whole, bytes + sample * kSampleBytes, kSampleBytes);
    }
}

void makeSigned8(std::uint8_t* bytes, std::size_t byteCount) {
    for (std::size_t i = 0; i < byteCount; ++i) {
        bytes[i] = static_cast<std::uint8_t>(bytes[i] - 0x80);
    }
}

void silence(float* const* buffers, std::uint32_t channels, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        std::fill(buffers[channel] + from, buffers[channel] + to, 0.0f);
    }
}
