#include "damage/long/HeldMemory.h"

#include <malloc.h>

namespace damage {

// Each thread keeps a few freed blocks for later use.
const std::uint64_t kHeldMemoryVariation = std::uint64_t{64} << 10;

std::uint64_t heldMemory() {
    const struct mallinfo2 heap = mallinfo2();
    return std::uint64_t{heap.uordblks} + heap.hblkhd;   // blocks in the heap, and those mapped separately
}

}  // namespace damage
