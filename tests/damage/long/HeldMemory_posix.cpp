#include "damage/long/HeldMemory.h"

#include <malloc.h>

namespace damage {

// Threads come and go, and each keeps a few freed blocks for its next need.
const std::uint64_t kHeldMemoryWanders = std::uint64_t{64} << 10;

std::uint64_t heldMemory() {
    const struct mallinfo2 heap = mallinfo2();
    return std::uint64_t{heap.uordblks} + heap.hblkhd;   // carved out of the heap, and mapped by themselves
}

}  // namespace damage
