// The expected contents of a host's frame buffer for a source picture, computed as docs/standin-codec.md says.
#pragma once

#include "pixels/HostFormats.h"
#include "standin/Encoder.h"

#include <cstdint>
#include <vector>

namespace pixels {

using Row = std::vector<std::uint8_t>;

// The rows in memory order, which is from the bottom of the picture to its top, without padding.
std::vector<Row> referenceRows(const standin::StreamInfo& stream, const standin::Picture& picture,
                               const HostFormat& format);

}  // namespace pixels
