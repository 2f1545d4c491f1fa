// The files that are opened: many tiny chunks, so that a long recording's index comes without its gigabytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// One file. The first stream is video, the others are sound; they take turns, chunk by chunk.
struct Case {
    bool openDml;           ///< OpenDML indexes alone, 16 Ki entries each; else "idx1" alone
    std::uint64_t chunks;   ///< of all streams together
    std::uint32_t streams;

    /// "openDml/2000000-in-2"
    std::string name() const;

    /// Chunks of each stream in turn.
    std::vector<std::uint64_t> chunksOfStreams() const;

    /// Path of the file, which is written when it is not there. Throws std::runtime_error when it cannot be, or when
    /// the environment variable QUORVANE_BENCH_FILES names no folder for it.
    std::string file() const;
};

/// All cases: two streams with 10,000 to 10,000,000 chunks, and a million chunks in one to 32 streams.
std::vector<Case> allCases();

}  // namespace bench
