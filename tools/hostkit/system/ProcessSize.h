// How much of the system the running program holds.
#pragma once

#include <cstdint>

namespace hostkit {

struct ProcessSize {
    std::uint64_t bytes = 0;        // of memory that is this process's own
    std::uint64_t peakBytes = 0;    // the most that it ever was
    std::uint64_t handles = 0;      // files and other objects of the system
};

// Zeros where the system does not tell. Its threads should be at rest: what is counted may change meanwhile.
ProcessSize processSize();

}  // namespace hostkit
