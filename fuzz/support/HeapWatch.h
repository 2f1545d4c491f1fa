// Measures the peak memory of a piece of work.
#pragma once

#include <cstddef>

namespace fuzz {

// Bytes in use and their maximum since the last start; 0 if the build cannot measure them.
class HeapWatch {
public:
    // Begins a measurement. Only one can run at a time.
    static void start();

    // Maximum number of bytes in use since start(), minus the bytes in use at start().
    static std::size_t peak();
};

}  // namespace fuzz
