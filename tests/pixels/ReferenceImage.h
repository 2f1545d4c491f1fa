// What a host's frame buffer must hold for a source picture, computed from the picture and docs/standin-codec.md.
#pragma once

#include "pixels/HostFormats.h"
#include "standin/Encoder.h"

#include <cstdint>
#include <vector>

namespace pixels {

using Row = std::vector<std::uint8_t>;

// The rows in the order of memory, which is from the bottom of the picture to its top, without padding.
std::vector<Row> referenceRows(const standin::StreamInfo& stream, const standin::Picture& picture,
                               const HostFormat& format);

}  // namespace pixels
