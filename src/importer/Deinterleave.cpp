#include "importer/Deinterleave.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)   // every 64-bit x86 processor
#include <emmintrin.h>
#endif

namespace {

constexpr std::size_t kSampleBytes = 4;
constexpr std::uint8_t kSign = 0x80;   // subtracting 0x80 from a byte flips its highest bit

// Four samples, copied as bits and never as numbers, so that a signalling NaN stays unchanged.
#if defined(__SSE2__) || defined(_M_X64)
using Four = __m128i;

template <int selection>
Four pick(Four first, Four second) {
    return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(first), _mm_castsi128_ps(second), selection));
}
Four evens(Four first, Four second) { return pick<_MM_SHUFFLE(2, 0, 2, 0)>(first, second); }
Four odds(Four first, Four second) { return pick<_MM_SHUFFLE(3, 1, 3, 1)>(first, second); }

Four toSigned8(Four bytes) { return _mm_xor_si128(bytes, _mm_set1_epi8(std::bit_cast<char>(kSign))); }

// Prefetches the cache line at `address`.
void fetch(const float* address) { _mm_prefetch(reinterpret_cast<const char*>(address), _MM_HINT_T0); }
#else
using Four = std::array<std::uint32_t, 4>;

Four evens(const Four& a, const Four& b) { return {a[0], a[2], b[0], b[2]}; }
Four odds(const Four& a, const Four& b) { return {a[1], a[3], b[1], b[3]}; }
Four toSigned8(Four bytes) {
    for (std::uint32_t& four : bytes) {
        four ^= kSign * 0x01010101u;
    }
    return bytes;
}
void fetch(const float*) {}
#endif

Four load(const std::uint8_t* bytes) {
    Four four;
    std::memcpy(&four, bytes, sizeof four);
    return four;
}

void store(void* out, const Four& four) {
    std::memcpy(out, &four, sizeof four);
}

// Copies frames [from, to) of one channel, whose first sample is at `source`; frames are `frameBytes` apart.
void copyOne(const std::uint8_t* source, std::size_t frameBytes, float* out, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t frame = from; frame < to; ++frame) {
        std::memcpy(out + frame, source + frame * frameBytes, kSampleBytes);
    }
}

void copyFourOfStereo(const std::uint8_t* source, float* left, float* right) {
    const Four first = load(source);
    const Four second = load(source + 16);
    store(left, evens(first, second));
    store(right, odds(first, second));
}

// Copies two channels, a cache line of frames at a time. Later lines are prefetched, otherwise each would be waited
// for.
void copyStereo(const std::uint8_t* source, float* const* buffers, std::uint32_t frames) {
    constexpr std::size_t kFrameBytes = 2 * kSampleBytes;
    constexpr std::uint32_t kStep = 16;
    constexpr std::uint32_t kAhead = 8 * kStep;
    float* const left = buffers[0];
    float* const right = buffers[1];
    std::uint32_t frame = 0;
    for (; frame + kStep <= frames; frame += kStep) {
        fetch(left + std::min(frame + kAhead, frames - 1));
        fetch(right + std::min(frame + kAhead, frames - 1));
        const std::uint8_t* at = source + frame * kFrameBytes;
        copyFourOfStereo(at, left + frame, right + frame);
        copyFourOfStereo(at + 32, left + frame + 4, right + frame + 4);
        copyFourOfStereo(at + 64, left + frame + 8, right + frame + 8);
        copyFourOfStereo(at + 96, left + frame + 12, right + frame + 12);
    }
    copyOne(source, kFrameBytes, left, frame, frames);
    copyOne(source + kSampleBytes, kFrameBytes, right, frame, frames);
}

// Copies frames [from, to) of four neighbouring channels, four frames at a time, by transposing a 4 x 4 square.
void copyFour(const std::uint8_t* source, std::size_t frameBytes, float* const* buffers, std::uint32_t from,
              std::uint32_t to) {
    std::uint32_t frame = from;
    for (; frame + 4 <= to; frame += 4) {
        const std::uint8_t* row = source + frame * frameBytes;
        const Four row0 = load(row);
        const Four row1 = load(row + frameBytes);
        const Four row2 = load(row + 2 * frameBytes);
        const Four row3 = load(row + 3 * frameBytes);
        const Four even01 = evens(row0, row1);
        const Four even23 = evens(row2, row3);
        const Four odd01 = odds(row0, row1);
        const Four odd23 = odds(row2, row3);
        store(buffers[0] + frame, evens(even01, even23));
        store(buffers[1] + frame, evens(odd01, odd23));
        store(buffers[2] + frame, odds(even01, even23));
        store(buffers[3] + frame, odds(odd01, odd23));
    }
    for (std::uint32_t channel = 0; channel < 4; ++channel) {
        copyOne(source + channel * kSampleBytes, frameBytes, buffers[channel], frame, to);
    }
}

// Copies a group of frames for all channels before the next group, so that its bytes stay in the cache.
void copyFrames(const std::uint8_t* bytes, float* const* buffers, std::uint32_t channels, std::uint32_t frames) {
    constexpr std::uint32_t kBlockFrames = 1024;
    const std::size_t frameBytes = channels * kSampleBytes;
    for (std::uint32_t from = 0; from < frames; from += kBlockFrames) {
        const std::uint32_t to = std::min(frames, from + kBlockFrames);
        std::uint32_t channel = 0;
        for (; channel + 4 <= channels; channel += 4) {
            copyFour(bytes + channel * kSampleBytes, frameBytes, buffers + channel, from, to);
        }
        for (; channel < channels; ++channel) {
            copyOne(bytes + channel * kSampleBytes, frameBytes, buffers[channel], from, to);
        }
    }
}

}  // namespace

void deinterleave32(const std::uint8_t* bytes, std::size_t byteCount, float* const* buffers, std::uint32_t channels,
                    std::uint32_t frames) {
    if (channels == 0 || frames == 0) {   // without frames, buffers may be missing
        return;
    }
    const std::size_t samples = byteCount / kSampleBytes;
    const auto whole = static_cast<std::uint32_t>(std::min<std::size_t>(samples / channels, frames));
    if (channels == 2) {
        copyStereo(bytes, buffers, whole);
    } else if (channels == 1 && whole != 0) {
        std::memcpy(buffers[0], bytes, whole * kSampleBytes);
    } else {
        copyFrames(bytes, buffers, channels, whole);
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
    std::size_t i = 0;
    for (; i + 64 <= byteCount; i += 64) {
        std::uint8_t* part = bytes + i;
        store(part, toSigned8(load(part)));
        store(part + 16, toSigned8(load(part + 16)));
        store(part + 32, toSigned8(load(part + 32)));
        store(part + 48, toSigned8(load(part + 48)));
    }
    for (; i < byteCount; ++i) {
        bytes[i] ^= kSign;
    }
}

void silence(float* const* buffers, std::uint32_t channels, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        std::fill(buffers[channel] + from, buffers[channel] + to, 0.0f);
    }
}
