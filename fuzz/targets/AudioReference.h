// The description of a sound format and the samples that the plug-in must deliver, worked out the plain way: field by
// field from the bytes, sample by sample from the stream.
#pragma once

#include "support/Input.h"

#include <cstdint>
#include <vector>

namespace fuzz {

struct SoundFormat {
    bool valid = false;
    bool isFloat = false;
    std::uint32_t channels = 0;
    std::uint32_t rate = 0;
    std::uint32_t blockAlign = 0;
    std::uint32_t bits = 0;
    std::vector<std::int32_t> labels;   // of the first slots; the others keep the host's values
};

// `record` is a stream's format as stored in the file.
SoundFormat soundFormatOf(ByteView record);

// Returns sample `frame` of `channel` in a request for `frames` sample frames from `position` on. `stream` is the sound
// as stored in the file. Returns bits, because not every sample is a number.
std::uint32_t soundSample(const SoundFormat& format, ByteView stream, std::int64_t position, std::uint32_t frames,
                          std::uint32_t frame, std::uint32_t channel);

}  // namespace fuzz
