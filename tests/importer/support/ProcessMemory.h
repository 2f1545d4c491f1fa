// How much memory this process has taken at most.
#pragma once

#include <cstdint>

// Bytes of address space (natively) or of committed memory (Windows), at their highest so far: memory that was taken
// and given back, or taken and never touched, counts.
std::uint64_t peakProcessBytes();
