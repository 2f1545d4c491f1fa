// Converts times in host ticks to frame numbers.
#pragma once

#include "sdk/SdkTypes.h"

#include <cstdint>
#include <limits>
#include <numeric>

// Result for a time whose frame cannot be computed in 64 bits; no stream has that many frames.
inline constexpr std::uint32_t kNoSuchFrame = 0xFFFFFFFF;

// Returns the duration in ticks, truncated, of a frame at `rate` / `scale` frames per second; neither may be 0. Returns
// 0 if it cannot be computed in 64 bits. The fraction is reduced first: both numbers may be multiples of a real rate's,
// too large for the product.
inline PrTime ticksPerFrame(std::int32_t rate, std::int32_t scale, PrTime ticksPerSecond) {
    const std::int64_t common = std::gcd(std::int64_t{scale}, std::int64_t{rate});
    const std::int64_t factor = scale / common;
    const std::int64_t most = std::numeric_limits<std::int64_t>::max() / (factor < 0 ? -factor : factor);
    const bool fits = -most <= ticksPerSecond && ticksPerSecond <= most;
    return fits ? factor * ticksPerSecond / (rate / common) : 0;
}

// The frame shown at `time`. A negative time becomes a huge frame number, which no stream has either.
inline std::uint32_t frameAt(PrTime time, PrTime ticksPerFrame) {
    if (ticksPerFrame == 0 || (ticksPerFrame == -1 && time == std::numeric_limits<PrTime>::min())) {
        return kNoSuchFrame;
    }
    return static_cast<std::uint32_t>(time / ticksPerFrame);
}
