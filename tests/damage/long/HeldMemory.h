// What the running program holds of memory, as exactly as its system tells.
#pragma once

#include <cstdint>

namespace damage {

// Bytes, of which a program at rest holds as many each time. On Linux those of all living blocks of the heap: what is
// resident there depends on when the heap returns pages, and wanders by more than a leak worth finding. On Windows
// those of the process.
std::uint64_t heldMemory();

// By how much that wanders where nothing is left behind.
extern const std::uint64_t kHeldMemoryWanders;

}  // namespace damage
