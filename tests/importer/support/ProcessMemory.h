// The peak memory of this process.
#pragma once

#include <cstdint>

// Peak number of bytes of address space (natively) or of committed memory (Windows). Memory that was freed, or never
// touched, counts too.
std::uint64_t peakProcessBytes();
