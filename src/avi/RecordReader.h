// The records of an index chunk, one after another.
#pragma once

#include "avi/ChunkReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>

/// Reads `length` bytes from `position` on in large pieces. Bytes that the file does not have, or that cannot be
/// read, are zero; they cost neither memory nor reads.
class RecordReader {
public:
    /// Reads the first piece at once. Throws std::bad_alloc.
    RecordReader(ChunkReader& reader, std::uint64_t position, std::uint64_t length);

    /// Bytes not yet taken that the file has.
    std::uint64_t remaining() const { return m_filled - m_taken + m_left; }

    /// The next record; its bytes past the end are zero.
    template <typename Record>
    Record next() {
        static_assert(std::is_trivially_copyable_v<Record>);
        Record record{};
        take(&record, sizeof record);
        return record;
    }

private:
    bool readPiece();
    void take(void* destination, std::size_t count);

    ChunkReader& m_reader;
    std::uint64_t m_position;  // of what is not yet in the piece
    std::uint64_t m_left;
    std::uint64_t m_pieceSize;
    std::unique_ptr<std::uint8_t[]> m_piece;
    std::uint64_t m_filled = 0;
    std::uint64_t m_taken = 0;
};
