// The records of an index, piece by piece.
#pragma once

#include "avi/ChunkReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

/// Takes `count` from what is left of a limit, or nothing where that is less.
inline bool take(std::uint64_t& left, std::uint64_t count) {
    const bool isEnough = count <= left;
    left -= isEnough ? count : 0;
    return isEnough;
}

/// Reads what the file has of `length` bytes from `position` on, up to the first piece that it does not give whole. The
/// pieces come into the chunk reader's own room, so that only one object of this class may be at work on a chunk reader
/// at a time.
class RecordReader {
public:
    // One piece is the whole index in all but the longest recordings; those must not need the memory of a second copy.
    static constexpr std::uint64_t kLargestPiece = std::uint64_t{4} << 20;

    /// Reads the first piece at once. `bytesLeft` is what may still be read, and must outlive the object. Throws
    /// std::bad_alloc.
    RecordReader(ChunkReader& reader, std::uint64_t& bytesLeft, std::uint64_t position, std::uint64_t length,
                 std::uint64_t pieceSize = kLargestPiece);

    /// Bytes not yet taken, as far as is known.
    std::uint64_t remaining() const { return m_piece.size() + m_left; }

    /// Whether a piece that the file should have was not read: nothing came, or it is more than may be read.
    bool wasRefused() const { return m_refused; }

    /// The record at the front; bytes that the file does not have are zero.
    template <typename Record>
    Record head() {
        Record record{};
        const std::size_t part = std::min(sizeof record, m_piece.size());
        std::copy_n(m_piece.data(), part, reinterpret_cast<std::uint8_t*>(&record));
        m_piece = m_piece.subspan(part);
        return record;
    }

    /// The next records, at most `count`; they stay until the next call. None at the end. A last one of which the file
    /// has only a part ends in zeros. Pieces and what was taken before must be whole records.
    template <typename Record>
    std::span<const Record> next(std::uint64_t count) {
        static_assert(std::is_trivially_copyable_v<Record> && sizeof(Record) <= ChunkReader::kPadding);
        if (m_piece.empty() && m_left > 0) {
            readPiece();
        }
        const std::size_t present = (m_piece.size() + sizeof(Record) - 1) / sizeof(Record);
        const std::span<const Record> records(reinterpret_cast<const Record*>(m_piece.data()),
                                              static_cast<std::size_t>(std::min<std::uint64_t>(count, present)));
        m_piece = m_piece.subspan(std::min(records.size_bytes(), m_piece.size()));
        return records;
    }

private:
    void readPiece();

    ChunkReader& m_reader;
    std::uint64_t& m_bytesLeft;
    std::uint64_t m_position;  // of what is not yet in the piece
    std::uint64_t m_left;
    std::uint64_t m_pieceSize;
    std::span<const std::uint8_t> m_piece;  // what is not yet taken of it
    bool m_refused = false;
};
