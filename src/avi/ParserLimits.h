// Bounds on what a hostile or damaged file can make the parser do. None of them is met by a file that a recorder
// or a muxer wrote.
#pragma once

#include <cstddef>
#include <cstdint>

namespace avi {

/// Nodes of the chunk tree. Media data is not walked, so a file has about three nodes per gigabyte; a run of zeros
/// behind a dead capture reads as one empty chunk every 8 bytes.
constexpr std::uint32_t kMaxNodes = 1'000'000;

/// Index entries of one stream that lie beyond the end of the file. Only the last index chunk of a file cut short
/// has any, and one index chunk describes at most some ten thousand chunks.
constexpr std::uint64_t kMaxUnbackedEntriesPerStream = 1'000'000;

/// The same for all streams together: each of them can have such a last index chunk, but thousands of streams
/// that all claim one are a trap for memory.
constexpr std::uint64_t kMaxUnbackedEntriesPerFile = 4'000'000;

/// Formats and indexes may read as many bytes as the file has, and this much more. In an honest file every byte
/// belongs to one chunk; past the sum, chunks overlap each other again and again.
constexpr std::uint64_t kOverlapAllowance = std::uint64_t{16} << 20;

/// Collected messages in bytes: more than any reader of a log would look at.
constexpr std::size_t kMaxErrorText = std::size_t{16} << 20;

}  // namespace avi
