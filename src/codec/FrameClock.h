// Times in host ticks against frames.
#pragma once

#include "sdk/SdkTypes.h"

#include <cstdint>
#include <limits>
#include <numeric>

// What a time maps to where 64 bits cannot tell its frame: no stream has as many.
inline constexpr std::uint32_t kNoSuchFrame = 0xFFFFFFFF;

// The ticks that a frame of a stream of `rate` / `scale` frames per second lasts, cut; neither is 0. 0 where 64 bits
// cannot tell. In lowest terms: both numbers may be multiples of an honest rate's, too large for the product.
inline PrTime ticksPerFrame(std::int32_t rate, std::int32_t scale, PrTime ticksPerSecond) {
    const std::int64_t common = std::gcd(std::int64_t{scale}, std::int64_t{rate});
    const std::int64_t factor = scale / common;
    const std::int64_t most = std::numeric_limits<std::int64_t>::max() / (factor < 0 ? -factor : factor);
    const bool fits = -most <= ticksPerSecond && ticksPerSecond <= most;
    return fits ? factor * ticksPerSecond / (rate / common) : 0;
}

// The frame that is shown at a time. A negative one becomes a huge one, which no stream has either.
inline std::uint32_t frameAt(PrTime time, PrTime ticksPerFrame) {
    if (ticksPerFrame == 0 || (ticksPerFrame == -1 && time == std::numeric_limits<PrTime>::min())) {
        return kNoSuchFrame;
    }
    return static_cast<std::uint32_t>(time / ticksPerFrame);
}
