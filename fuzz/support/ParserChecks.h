// What every parse must leave, whatever the file.
#pragma once

#include "avi/AviParser.h"

#include <cstddef>
#include <cstdint>

namespace fuzz {

// `claimedFileSize` is what the file said of its size before it was parsed.
void checkParsed(const AviParser& parser, std::uint64_t claimedFileSize);

// `peak` bytes were taken to open and describe a file of `fileSize` bytes.
void checkDescriptionMemory(std::size_t peak, std::size_t fileSize);

}  // namespace fuzz
