// Reads and seeks for callers that treat a partial read as a failure.
#pragma once

#include "fileio/File.h"

namespace fileio {

// Reads `size` bytes into `buffer` in one call. Throws std::runtime_error "Read error: size: 8, read: 3" if any other
// number of bytes was read.
void readExact(File& file, void* buffer, std::uint64_t size);

// Throws the error of readExact, for a read that is known to come up short.
[[noreturn]] void throwReadError(std::uint64_t size, std::uint64_t read);

// Moves to `pos`. Throws std::runtime_error "Seek error: pos: -1" if that fails.
void seekOrThrow(File& file, std::int64_t pos);

}  // namespace fileio
