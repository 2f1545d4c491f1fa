// Reads and seeks for callers to whom anything less than all is a failure.
#pragma once

#include "fileio/File.h"

namespace fileio {

/// Reads `size` bytes into `buffer` in one call. Throws std::runtime_error "Read error: size: 8, read: 3" when
/// another number of bytes came.
void readExact(File& file, void* buffer, std::uint64_t size);

/// Throws the error of readExact for a read that is known to fall short.
[[noreturn]] void throwReadError(std::uint64_t size, std::uint64_t read);

/// Moves to `pos`. Throws std::runtime_error "Seek error: pos: -1" when the file refuses.
void seekOrThrow(File& file, std::int64_t pos);

}  // namespace fileio
