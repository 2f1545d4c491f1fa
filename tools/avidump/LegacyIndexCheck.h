// Whether a stream's "idx1" entries point at chunks, which the parser takes on trust.
#pragma once

#include "avi/AviStream.h"
#include "fileio/File.h"

#include <cstddef>

namespace avidump {

struct LegacyIndexCheck {
    std::size_t checked = 0;
    std::size_t astray = 0;     ///< of these: no header of a chunk of this stream stands before the data
};

/// Reads the headers of all chunks, or of at most 1000 that are spread evenly: each costs a read somewhere in the file.
/// Empty chunks are left out: no bytes are read from where they are.
LegacyIndexCheck checkLegacyIndex(fileio::File& file, const AviStream& stream, bool all);

}  // namespace avidump
