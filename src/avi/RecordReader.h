// The records of an index chunk, one after another.
#pragma once

#include "avi/ChunkReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

/// Reads `length` bytes from `position` on in large pieces. Bytes that the file does not have, or that cannot be
/// read, are zero; they cost neither memory nor reads. The pieces come into the chunk reader's own room, so that only
/// one object of this class may be at work on a chunk reader at a time.
class RecordReader {
public:
    // One piece is the whole index in all but the longest recordings; those must not need the memory of a second copy.
    static constexpr std::uint64_t kLargestPiece = std::uint64_t{4} << 20;

    /// Reads the first piece at once. Throws std::bad_alloc.
    RecordReader(ChunkReader& reader, std::uint64_t position, std::uint64_t length,
                 std::uint64_t largestPiece = kLargestPiece);

    /// Bytes not yet taken that the file has.
    std::uint64_t remaining() const { return m_filled - m_taken + m_left; }

    /// Whether nothing came of a piece that lies in the file: the chunk reader refuses it, or the disk fails there.
    /// What is in the file is then not known, and remaining() is 0.
    bool wasDenied() const { return m_denied; }

    /// The next record; its bytes past the end are zero.
    template <typename Record>
    Record next() {
        static_assert(std::is_trivially_copyable_v<Record>);
        Record record{};
        take(&record, sizeof record);
        return record;
    }

    /// The next records, at least one and at most `count`, which must not be 0: as many as lie whole in the present
    /// piece, else one as next() gives it. They stay until the next call.
    template <typename Record>
    std::span<const Record> nextRun(std::uint64_t count) {
        static_assert(std::is_trivially_copyable_v<Record> && sizeof(Record) <= kLargestRecord);
        if (m_taken == m_filled && m_left > 0) {
            readPiece();
        }
        const std::uint64_t whole = std::min(count, (m_filled - m_taken) / sizeof(Record));
        if (whole == 0 || m_taken % alignof(Record) != 0) {
            const Record record = next<Record>();
            std::memcpy(m_single.data(), &record, sizeof record);
            return {reinterpret_cast<const Record*>(m_single.data()), 1};
        }
        const std::span<const Record> run(reinterpret_cast<const Record*>(m_piece + m_taken),
                                          static_cast<std::size_t>(whole));
        m_taken += run.size_bytes();
        return run;
    }

private:
    static constexpr std::size_t kLargestRecord = 32;

    bool readPiece();
    void take(void* destination, std::size_t count);

    ChunkReader& m_reader;
    std::uint64_t m_position;  // of what is not yet in the piece
    std::uint64_t m_left;
    std::uint64_t m_pieceSize;
    std::uint8_t* m_piece;  // aligned for every record
    std::uint64_t m_filled = 0;
    std::uint64_t m_taken = 0;
    bool m_denied = false;
    alignas(std::max_align_t) std::array<std::uint8_t, kLargestRecord> m_single;
};
