// The outline of a sound over time, channel by channel: the lowest and the highest sample of each column.
#pragma once

#include "importhost/clips/SoundClip.h"

#include <cstdint>
#include <string>
#include <vector>

namespace importhost {

struct Extent {
    float low = 0.0f;
    float high = 0.0f;

    friend bool operator==(const Extent&, const Extent&) = default;
};

struct Waveform {
    std::vector<std::vector<Extent>> channels;  // per channel, the same number of columns for each
    bool isSampled = false;                     // not all of the sound was looked at
    std::string failure;                        // why columns are missing at the end; empty when none are
};

// Of each column at most this many sample frames, from its start on: a picture of a long clip must not take as long
// as playing it.
inline constexpr std::int64_t kMostFramesOfAWaveColumn = 16384;

// At most `columns` of them, fewer for a sound of fewer sample frames. Reads in blocks. What is no number counts as
// silence.
Waveform waveformOf(SoundClip& clip, std::int64_t columns);

}  // namespace importhost
