// Checks whether a stream's "idx1" entries point at chunks, which the parser assumes.
#pragma once

#include "avi/AviStream.h"
#include "fileio/File.h"

#include <cstddef>

namespace avidump {

struct LegacyIndexCheck {
    std::size_t checked = 0;
    std::size_t astray = 0;     // entries without a chunk header of this stream before the data
};

// Reads the headers of all chunks, or of at most 1000 spread evenly, because each costs a read at another position.
// Empty chunks are skipped: nothing is ever read from their positions.
LegacyIndexCheck checkLegacyIndex(fileio::File& file, const AviStream& stream, bool all);

}  // namespace avidump
