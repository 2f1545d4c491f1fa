// Bounds on what a hostile or damaged file can make the parser do. None of them is met by a file that a recorder or a
// muxer wrote. Together they keep the memory that a file takes by mere claims below 64 MiB. Index bytes that the file
// has are no mere claims: each 8 of a standard index take 16.5 bytes, each 16 of a super index 40. The zeros of a
// hole, which cost nothing on disk, take next to none: an index of zeros looks like one of dropped frames, and is
// taken for it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace avi {

/// Nodes of the chunk tree, 32 bytes of memory each. Media data is not walked, so a file has about three nodes per
/// gigabyte; a run of zeros behind a dead capture reads as one empty chunk every 8 bytes.
constexpr std::uint32_t kMaxNodes = 500'000;

/// Nodes beyond one for every 8 bytes of the file. Each chunk has a header of its own in an honest file; lists that run
/// past their parents' ends show the same headers again and again, twice as many with every further list.
constexpr std::uint32_t kMaxRepeatedNodes = 10'000;

/// Streams; further ones are left out. Chunk ids have two digits for a stream's number.
constexpr std::uint32_t kMaxStreams = 10'000;

/// Bytes of one stream's format: a record of some ten bytes and what the codec adds, kilobytes at most. A file with
/// holes has gigabytes that cost nothing on disk, and a damaged size makes them one format.
constexpr std::uint64_t kMaxFormatBytes = std::uint64_t{1} << 20;

/// The same for all streams together, and as much is read at most.
constexpr std::uint64_t kMaxFormatBytesPerFile = std::uint64_t{8} << 20;

/// Index entries of one stream that lie beyond the end of the file or cannot be read, 17 bytes of memory each. Only the
/// last index chunk of a file cut short has any. Recorders begin a new one with each segment of a gigabyte or two, some
/// ten thousand chunks; an index for hours of small sound chunks has hundreds of thousands, of which a cut takes some.
constexpr std::uint64_t kMaxUnbackedEntriesPerStream = 250'000;

/// The same for all streams together: each of them can have such a last index chunk, but thousands of streams
/// that all claim one are a trap for memory.
constexpr std::uint64_t kMaxUnbackedEntriesPerFile = 500'000;

/// Indexes may read as many bytes as the file has, and this much more. In an honest file every byte belongs to one
/// chunk; past the sum, chunks overlap each other again and again, and each pass over an index takes twice its bytes of
/// memory. The bytes of "idx1", and kLeastReadCost, are set aside before all else: whatever a broken OpenDML index uses
/// up, a file that has the other can fall back to it.
constexpr std::uint64_t kOverlapAllowance = std::uint64_t{4} << 20;

/// And never more than this, which is a million index chunks at most. A day of 60 pictures a second, and as many chunks
/// of each of 31 sound streams, has 1.3 GB of indexes; in a million chunks if each held no more than three seconds, and
/// recorders give them minutes. A forged file can have terabytes of indexes that cost nothing on disk.
constexpr std::uint64_t kMaxIndexBytes = std::uint64_t{4} << 30;

/// A read of an index that goes to the file, and is not among the headers, counts as at least so many of those bytes.
/// A recorder writes an index chunk behind megabytes of media; a damaged super index can lead to millions of indexes of
/// a byte each, and on a network drive each of them takes a journey there and back.
constexpr std::uint64_t kLeastReadCost = 4096;

/// Reads for chunk headers may take in twice as many bytes as the file has, and kOverlapAllowance more. A read far from
/// all others takes 4 KiB and counts as the 64 KiB that others take, since it is the journey that costs. The walk over
/// an honest file reads no byte twice, and the headers once more at most; lists that run past their parents' ends lead
/// it over the same gigabytes again and again.
constexpr std::uint64_t kHeaderPasses = 2;

/// And never more than this, which is 65,536 blocks. A recording of a terabyte takes some two thousand, one or two for
/// each of its segments; a forged file can have headers by the half million in terabytes that cost nothing on disk.
constexpr std::uint64_t kMaxHeaderBytes = std::uint64_t{4} << 30;

/// Collected messages in bytes: more than any reader of a log would look at.
constexpr std::size_t kMaxErrorText = std::size_t{1} << 20;

}  // namespace avi
