// The memory that the running program holds, as exactly as the system reports it.
#pragma once

#include <cstdint>

namespace damage {

// Number of bytes, which is constant for an idle program. On Linux those of all allocated heap blocks: the resident
// size depends on when the heap returns pages, and varies by more than a relevant leak. On Windows those of the
// process.
std::uint64_t heldMemory();

// By how many bytes that varies without a leak.
extern const std::uint64_t kHeldMemoryVariation;

}  // namespace damage
