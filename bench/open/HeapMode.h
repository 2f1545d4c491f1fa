// Whether a reader finds its memory new or used. The C library decides by what was freed before, so that without an
// order the time of one reader would depend on which other ran last.
#pragma once

namespace bench {

enum class HeapMode {
    fresh,   ///< every opening gets its memory from the system, page by page, as a host's next clip does
    reused,  ///< memory that an earlier opening gave back is there already
};

/// Sets the heap of the whole program up for the next opening. Slow; to be called while no time runs.
void setUpHeap(HeapMode mode);

}  // namespace bench
