// The Audio Suite. An integer sample x of b bits stands for x / 2^(b-1), so the lowest one is exactly -1.0;
// going back, values beyond the range are clipped.
#include "hostkit/host/HostTables.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

constexpr double kScale8 = 128.0;
constexpr double kScale16 = 32768.0;
constexpr double kScale24 = 8388608.0;
constexpr double kScale32 = 2147483648.0;

csSDK_int32 clipped(float value, double scale) {
    return static_cast<csSDK_int32>(std::clamp(std::floor(value * scale + 0.5), -scale, scale - 1.0));
}

csSDK_int32 read24(const char* bytes) {
    const auto byte = [bytes](int i) { return static_cast<csSDK_int32>(static_cast<unsigned char>(bytes[i])); };
    return (static_cast<signed char>(bytes[2]) * 65536) + byte(1) * 256 + byte(0);
}

void write24(char* bytes, csSDK_int32 value) {
    for (int i = 0; i < 3; ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(static_cast<csSDK_uint32>(value) >> (8 * i)));
    }
}

// `write(index, sample)` for every sample, channel by channel within each sample frame.
template <class Write>
prSuiteError interleave(HostCall call, const float** source, csSDK_uint32 channels, csSDK_uint32 frames, double scale,
                        Write write) {
    if (const auto forced = enter(call, channels, " channels, ", frames, " frames")) {
        return *forced;
    }
    for (csSDK_uint32 frame = 0; frame < frames; ++frame) {
        for (csSDK_uint32 channel = 0; channel < channels; ++channel) {
            write(std::size_t{frame} * channels + channel, clipped(source[channel][frame], scale));
        }
    }
    return kSuiteNoError;
}

template <class Read>
prSuiteError uninterleave(HostCall call, float** out, csSDK_uint32 channels, csSDK_uint32 frames, double scale,
                          Read read) {
    if (const auto forced = enter(call, channels, " channels, ", frames, " frames")) {
        return *forced;
    }
    for (csSDK_uint32 frame = 0; frame < frames; ++frame) {
        for (csSDK_uint32 channel = 0; channel < channels; ++channel) {
            out[channel][frame] = static_cast<float>(read(std::size_t{frame} * channels + channel) / scale);
        }
    }
    return kSuiteNoError;
}

prSuiteError interleaveTo8(const float** source, char* out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return interleave(HostCall::InterleaveTo8, source, channels, frames, kScale8,
                      [out](std::size_t i, csSDK_int32 sample) { out[i] = static_cast<char>(sample); });
}

prSuiteError interleaveTo16(const float** source, short* out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return interleave(HostCall::InterleaveTo16, source, channels, frames, kScale16,
                      [out](std::size_t i, csSDK_int32 sample) { out[i] = static_cast<short>(sample); });
}

prSuiteError interleaveTo24(const float** source, char* out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return interleave(HostCall::InterleaveTo24, source, channels, frames, kScale24,
                      [out](std::size_t i, csSDK_int32 sample) { write24(out + 3 * i, sample); });
}

prSuiteError interleaveTo32(const float** source, csSDK_int32* out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return interleave(HostCall::InterleaveTo32, source, channels, frames, kScale32,
                      [out](std::size_t i, csSDK_int32 sample) { out[i] = sample; });
}

prSuiteError uninterleaveFrom8(const char* source, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return uninterleave(HostCall::UninterleaveFrom8, out, channels, frames, kScale8,
                        [source](std::size_t i) { return static_cast<signed char>(source[i]); });
}

prSuiteError uninterleaveFrom16(const short* source, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return uninterleave(HostCall::UninterleaveFrom16, out, channels, frames, kScale16,
                        [source](std::size_t i) { return source[i]; });
}

prSuiteError uninterleaveFrom24(const char* source, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return uninterleave(HostCall::UninterleaveFrom24, out, channels, frames, kScale24,
                        [source](std::size_t i) { return read24(source + 3 * i); });
}

prSuiteError uninterleaveFrom32(const csSDK_int32* source, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
    return uninterleave(HostCall::UninterleaveFrom32, out, channels, frames, kScale32,
                        [source](std::size_t i) { return source[i]; });
}

}  // namespace

const PrSDKAudioSuite* audioTable() {
    static const PrSDKAudioSuite table = {interleaveTo8, interleaveTo16, interleaveTo24, interleaveTo32,
                                          uninterleaveFrom8, uninterleaveFrom16, uninterleaveFrom24,
                                          uninterleaveFrom32};
    return &table;
}

}  // namespace hostkit
