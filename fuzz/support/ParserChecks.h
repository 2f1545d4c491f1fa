// Checks that every parse must pass, for any file.
#pragma once

#include "avi/AviParser.h"

#include <cstddef>
#include <cstdint>

namespace fuzz {

// `claimedFileSize` is the size that the file reported before it was parsed.
void checkParsed(const AviParser& parser, std::uint64_t claimedFileSize);

// `peak` is the number of bytes taken to open and describe a file of `fileSize` bytes.
void checkDescriptionMemory(std::size_t peak, std::size_t fileSize);

}  // namespace fuzz
