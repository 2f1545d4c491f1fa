// The sound level over time of each channel, for a small picture in text.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace importhost {

struct Levels {
    csSDK_int32 result = imUnsupported;             // of the first failed request, or imNoErr
    std::vector<std::vector<float>> peaks;          // per channel; the highest absolute sample of each interval

    friend bool operator==(const Levels&, const Levels&) = default;
};

// Maximum number of intervals, and of sample frames read at the start of each: describing a clip must not take as long
// as playing it.
inline constexpr std::int64_t kLevelColumns = 48;
inline constexpr std::int64_t kMostFramesOfAColumn = 65536;

// Reads the sound of the stream that was described last. No peaks if the stream has no channels, no sample frames, or
// more channels than a host supports.
Levels levelsOf(hostkit::ClipSession& clip, const imFileInfoRec8& info);

// The highest absolute sample, 0 if there is none; NaN counts as silence.
float peakOf(const std::vector<float>& samples);

// A bar per peak: full height for full scale or more, a blank for silence, and at least the lowest bar for anything
// else.
std::string bars(const std::vector<float>& peaks);

// "-6.0 dB", "silence".
std::string decibelText(float peak);

}  // namespace importhost
