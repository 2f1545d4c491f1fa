// The waveform of a sound, channel by channel: the lowest and the highest sample of each column.
#pragma once

#include "importhost/clips/SoundReader.h"

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
    std::vector<std::vector<Extent>> channels;  // one per channel, all with the same number of columns
    bool isSampled = false;                     // true if not all of the sound was read
    std::string failure;                        // why columns are missing at the end; empty if none are
};

// Maximum number of sample frames read at the start of each column: a picture of a long clip must not take as long as
// playing it.
inline constexpr std::int64_t kMostFramesOfAWaveColumn = 16384;

// Returns at most `columns` columns, fewer if there are fewer sample frames. Reads in blocks. NaN counts as silence.
Waveform waveformOf(SoundReader& clip, std::int64_t columns);

}  // namespace importhost
