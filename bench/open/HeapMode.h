// Whether a reader gets new or reused memory. The C library decides that by what was freed before; unless it is set,
// the time of one reader would depend on which one ran last.
#pragma once

namespace bench {

enum class HeapMode {
    fresh,   // every opening gets its memory from the system, page by page, as a host's next clip does
    reused,  // memory that an earlier opening freed is available
};

// Sets up the heap of the whole program for the next opening. Slow; call it while no time is measured.
void setUpHeap(HeapMode mode);

}  // namespace bench
