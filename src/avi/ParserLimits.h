// Bounds on what a damaged file can make the parser do, each with the file that needs it. No file that a recorder or a
// muxer wrote meets one. docs/robustness.md says what a file beyond them gets.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace avi {

// The walk. A recording takes three nodes and a block or two for each of its segments.
constexpr std::uint32_t kMaxNodes = 200'000;         ///< 32 bytes of memory each: media read as chunks
constexpr std::uint32_t kMaxSkippedZeros = 8 << 20;  ///< 64 MiB: a copy that reserved its full size and stopped
/// Lists that run past their parents' ends lead over the same chunks again and again.
constexpr std::uint64_t maxWalkBlocks(std::uint64_t fileSize) {
    return std::min<std::uint64_t>(fileSize / 65'536 + 1024, 65'536);
}
// Headers. Such lists repeat streams, too, and a damaged size makes gigabytes of media one format.
constexpr std::uint32_t kMaxStreams = 10'000;
constexpr std::uint64_t kMaxFormatBytes = 8 << 20;  ///< of all streams together
// OpenDML indexes, of all streams together. A damaged super index leads to thousands of indexes of a byte, or to the
// same ones again and again; a forged one to terabytes of zeros that cost nothing on disk.
constexpr std::uint64_t maxIndexes(std::uint64_t fileSize) {
    return std::min<std::uint64_t>(fileSize / 4096 + 16'384, 1 << 20);
}
/// 512 MiB are 67 million chunks: a day of 60 pictures a second and as many chunks of each of 11 sound streams.
constexpr std::uint64_t maxIndexBytes(std::uint64_t fileSize) {
    return std::min<std::uint64_t>(fileSize + (4 << 20), 512 << 20);
}
constexpr std::uint64_t kMaxMissingEntries = 1'000'000;  ///< 17 bytes of memory each: indexes at the end of a cut file
constexpr std::size_t kMaxErrorText = 1 << 20;           ///< a message for each index that cannot be read

}  // namespace avi
