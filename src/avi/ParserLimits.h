// Limits on what a damaged file can make the parser do, each with the file that needs it. No file written by a recorder
// or muxer reaches one. docs/robustness.md says what happens to a file that does.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace avi {

// Walk. A recording takes three nodes and a block or two per segment.
constexpr std::uint32_t kMaxNodes = 200'000;         // 32 bytes of memory each: media read as chunks
constexpr std::uint32_t kMaxSkippedZeros = 8 << 20;  // 64 MiB: a copy that reserved its full size and stopped
// Lists that extend past their parents' ends lead to the same chunks again and again.
constexpr std::uint64_t maxWalkBlocks(std::uint64_t fileSize) {
    return std::min<std::uint64_t>(fileSize / 65'536 + 1024, 65'536);
}
// Headers. Such lists also repeat streams, and a damaged size can make gigabytes of media one format.
constexpr std::uint32_t kMaxStreams = 10'000;
constexpr std::uint64_t kMaxFormatBytes = 8 << 20;  // all streams together
// OpenDML indexes, all streams together. A damaged super index leads to thousands of one-byte indexes, or to the same
// ones again and again; a forged one to terabytes of zeros that take no disk space.
constexpr std::uint64_t maxIndexes(std::uint64_t fileSize) {
    return std::min<std::uint64_t>(fileSize / 4096 + 16'384, 1 << 20);
}
// 512 MiB hold 67 million chunks: a day at 60 pictures a second, with as many chunks for each of 11 sound streams.
constexpr std::uint64_t maxIndexBytes(std::uint64_t fileSize) {
    return std::min<std::uint64_t>(fileSize + (4 << 20), 512 << 20);
}
constexpr std::uint64_t kMaxMissingEntries = 1'000'000;  // 17 bytes of memory each: indexes at the end of a cut file
constexpr std::size_t kMaxErrorText = 1 << 20;           // a message for each index that cannot be read

}  // namespace avi
