// How loud a sound is over time, channel by channel, for a small picture in text.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace importhost {

struct Levels {
    csSDK_int32 result = imUnsupported;             // of the first request that failed, or imNoErr
    std::vector<std::vector<float>> peaks;          // per channel; the highest absolute sample of each stretch of time

    friend bool operator==(const Levels&, const Levels&) = default;
};

// At most this many stretches of time, and of each at most so many sample frames from its start are looked at: telling
// what is in a clip must not take as long as playing it.
inline constexpr std::int64_t kLevelColumns = 48;
inline constexpr std::int64_t kMostFramesOfAColumn = 65536;

// Asks for the sound of the stream that was described last. No peaks for a stream that claims no channel, no sample
// frame, or more channels than a host takes.
Levels levelsOf(hostkit::ClipSession& clip, const imFileInfoRec8& info);

// The highest absolute sample, 0 for none; one that is no number counts as silence.
float peakOf(const std::vector<float>& samples);

// A bar per peak, as high as it: full scale and all beyond is the highest one, silence a blank, and anything above
// silence at least the lowest one.
std::string bars(const std::vector<float>& peaks);

// "-6.0 dB", "silence".
std::string decibelText(float peak);

}  // namespace importhost
