// Parses the values of makeavi's options. Every function throws std::invalid_argument, with a text that says what was
// expected, for an invalid value.
#pragma once

#include "aviwriter/Sample.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace makeavi {

// "320x180": width and height in pixels, 1 to 16384 each.
std::pair<std::uint32_t, std::uint32_t> parseSize(std::string_view text);

// "30000/1001" or "25": rate and scale, neither of them 0.
std::pair<std::uint32_t, std::uint32_t> parseRate(std::string_view text);

// "idx1", "opendml" or "both".
aviwriter::IndexKind parseIndex(std::string_view text);

// "601" or "709"; returns the codec's numbers, 1 and 2.
std::uint32_t parseColor(std::string_view text);

// "limited" or "full"; returns the codec's numbers, 1 and 2.
std::uint32_t parseRange(std::string_view text);

// "100000", "64KB", "1MB" or "5GB": bytes, or units of 1024, 1024^2 or 1024^3 bytes.
std::uint64_t parseBytes(std::string_view text);

// "3,5-8": single numbers and ranges.
std::set<std::uint32_t> parseFrames(std::string_view text);

// "FORMAT:CHANNELS:RATE", followed by any of ":mask=M", ":chunk=N" and ":header=16|18|40". A mask requires the 40-byte
// header, the only one with a field for it.
aviwriter::SampleAudio parseAudio(std::string_view text);

}  // namespace makeavi
