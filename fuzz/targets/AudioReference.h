// What the plug-in must say of a sound format and deliver of its samples, worked out the plain way: field by field from
// the bytes, sample by sample from the stream.
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
    std::vector<std::int32_t> labels;   // of the leading slots; the others keep what the host put there
};

// `record` is a stream's format as the file has it.
SoundFormat soundFormatOf(ByteView record);

// Sample `frame` of `channel` in an answer about `frames` sample frames from `position` on. `stream` is the sound as
// the file holds it. As bits, because not every sample is a number.
std::uint32_t soundSample(const SoundFormat& format, ByteView stream, std::int64_t position, std::uint32_t frames,
                          std::uint32_t frame, std::uint32_t channel);

}  // namespace fuzz
