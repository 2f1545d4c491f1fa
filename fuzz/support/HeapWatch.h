// How much memory a piece of work takes at its peak.
#pragma once

#include <cstddef>

namespace fuzz {

// Bytes in use and their highest number since the last start; 0 where the build cannot tell.
class HeapWatch {
public:
    // Begins a measurement. One at a time.
    static void start();

    // The most bytes in use since start(), above what was in use then.
    static std::size_t peak();
};

}  // namespace fuzz
