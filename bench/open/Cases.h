// The files to open: many tiny chunks, so that they have a long recording's index but not its gigabytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// One file. The first stream is video, the others are sound; their chunks alternate.
struct Case {
    bool openDml;           // only OpenDML indexes, 16 Ki entries each; otherwise only "idx1"
    std::uint64_t chunks;   // of all streams together
    std::uint32_t streams;

    // "openDml/2000000-in-2"
    std::string name() const;

    // Number of chunks of each stream, in stream order.
    std::vector<std::uint64_t> chunksOfStreams() const;

    // Path of the file; writes it if it does not exist. Throws std::runtime_error if that fails or the environment
    // variable QUORVANE_BENCH_FILES does not name a folder for it.
    std::string file() const;
};

// All cases: 10,000 to 10,000,000 chunks in two streams, and a million chunks in one to 32 streams.
std::vector<Case> allCases();

}  // namespace bench
