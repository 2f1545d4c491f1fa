#include "importer/Deinterleave.h"

#include <algorithm>
#include <cstring>
#include <emmintrin.h>   // what every 64-bit x86 processor has

namespace {

// Frames that are copied for some channels after the others: their bytes stay in the processor's cache meanwhile.
constexpr std::uint32_t kBlockFrames = 1024;

constexpr std::size_t kSampleBytes = 4;

__m128i load(const std::uint8_t* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

void store(void* bytes, __m128i value) {
    _mm_storeu_si128(static_cast<__m128i*>(bytes), value);
}

// Has the processor fetch the line that holds an address.
void fetch(const void* address) {
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
}

// Two samples of each. Samples are moved as bits, never as numbers: a signalling NaN stays what it is.
template <int selection>
__m128i pick(__m128i first, __m128i second) {
    return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(first), _mm_castsi128_ps(second), selection));
}

// Whole frames [from, to) of one channel, whose first sample is at `source`; frames are `frameBytes` apart.
void copyOne(const std::uint8_t* source, std::size_t frameBytes, float* out, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t frame = from; frame < to; ++frame) {
        std::memcpy(out + frame, source + frame * frameBytes, kSampleBytes);
    }
}

// Four frames of two channels.
void copyFourOfStereo(const std::uint8_t* source, float* left, float* right) {
    const __m128i first = load(source);
    const __m128i second = load(source + 16);
    store(left, pick<_MM_SHUFFLE(2, 0, 2, 0)>(first, second));
    store(right, pick<_MM_SHUFFLE(3, 1, 3, 1)>(first, second));
}

// Whole frames [from, to) of a file with two channels: as many at a time as fill a line of the processor's cache, and
// the lines that come a little later are asked for already, or each would be waited for.
void copyStereo(const std::uint8_t* source, float* const* buffers, std::uint32_t from, std::uint32_t to) {
    constexpr std::size_t kFrameBytes = 2 * kSampleBytes;
    constexpr std::uint32_t kStep = 16;
    constexpr std::uint32_t kAhead = 8 * kStep;
    float* const left = buffers[0];
    float* const right = buffers[1];
    std::uint32_t frame = from;
    for (; frame + kStep <= to; frame += kStep) {
        fetch(left + std::min(frame + kAhead, to - 1));
        fetch(right + std::min(frame + kAhead, to - 1));
        const std::uint8_t* at = source + frame * kFrameBytes;
        copyFourOfStereo(at, left + frame, right + frame);
        copyFourOfStereo(at + 32, left + frame + 4, right + frame + 4);
        copyFourOfStereo(at + 64, left + frame + 8, right + frame + 8);
        copyFourOfStereo(at + 96, left + frame + 12, right + frame + 12);
    }
    copyOne(source, kFrameBytes, left, frame, to);
    copyOne(source + kSampleBytes, kFrameBytes, right, frame, to);
}

// Whole frames [from, to) of four neighbouring channels, four frames at a time: a square whose rows become columns.
void copyFour(const std::uint8_t* source, std::size_t frameBytes, float* const* buffers, std::uint32_t from,
              std::uint32_t to) {
    std::uint32_t frame = from;
    for (; frame + 4 <= to; frame += 4) {
        const std::uint8_t* row = source + frame * frameBytes;
        const __m128i row0 = load(row);
        const __m128i row1 = load(row + frameBytes);
        const __m128i row2 = load(row + 2 * frameBytes);
        const __m128i row3 = load(row + 3 * frameBytes);
        const __m128i low01 = _mm_unpacklo_epi32(row0, row1);
        const __m128i low23 = _mm_unpacklo_epi32(row2, row3);
        const __m128i high01 = _mm_unpackhi_epi32(row0, row1);
        const __m128i high23 = _mm_unpackhi_epi32(row2, row3);
        store(buffers[0] + frame, _mm_unpacklo_epi64(low01, low23));
        store(buffers[1] + frame, _mm_unpackhi_epi64(low01, low23));
        store(buffers[2] + frame, _mm_unpacklo_epi64(high01, high23));
        store(buffers[3] + frame, _mm_unpackhi_epi64(high01, high23));
    }
    for (std::uint32_t channel = 0; channel < 4; ++channel) {
        copyOne(source + channel * kSampleBytes, frameBytes, buffers[channel], frame, to);
    }
}

// Whole frames [from, to) of all channels.
void copyFrames(const std::uint8_t* bytes, float* const* buffers, std::uint32_t channels, std::uint32_t from,
                std::uint32_t to) {
    if (channels == 2) {
        copyStereo(bytes, buffers, from, to);
        return;
    }
    const std::size_t frameBytes = channels * kSampleBytes;
    std::uint32_t channel = 0;
    for (; channel + 4 <= channels; channel += 4) {
        copyFour(bytes + channel * kSampleBytes, frameBytes, buffers + channel, from, to);
    }
    for (; channel < channels; ++channel) {
        copyOne(bytes + channel * kSampleBytes, frameBytes, buffers[channel], from, to);
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
    // Subtracting 0x80 from a byte is turning its highest bit.
    constexpr std::size_t kStep = 64;
    const __m128i highest = _mm_set1_epi8(static_cast<char>(0x80));
    std::size_t i = 0;
    for (; i + kStep <= byteCount; i += kStep) {
        std::uint8_t* part = bytes + i;
        store(part, _mm_xor_si128(load(part), highest));
        store(part + 16, _mm_xor_si128(load(part + 16), highest));
        store(part + 32, _mm_xor_si128(load(part + 32), highest));
        store(part + 48, _mm_xor_si128(load(part + 48), highest));
    }
    for (; i < byteCount; ++i) {
        bytes[i] = static_cast<std::uint8_t>(bytes[i] - 0x80);
    }
}

void silence(float* const* buffers, std::uint32_t channels, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        std::fill(buffers[channel] + from, buffers[channel] + to, 0.0f);
    }
}
