// Reads the records of an index in pieces.
#pragma once

#include "avi/ChunkReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

// Takes `count` from `left`. Returns false and takes nothing if less is left.
inline bool take(std::uint64_t& left, std::uint64_t count) {
    const bool isEnough = count <= left;
    left -= isEnough ? count : 0;
    return isEnough;
}

// Reads `length` bytes from `position`, as far as the file has them, and stops at the first piece that cannot be read
// in full. The pieces are read into the chunk reader's own buffer, so only one RecordReader may be in use per chunk
// reader.
class RecordReader {
public:
    // All but the longest recordings have indexes of one piece; those must not need memory for a second copy.
    static constexpr std::uint64_t kLargestPiece = std::uint64_t{4} << 20;

    // Reads the first piece at once. `bytesLeft` is the remaining read budget and must outlive the object. Throws
    // std::bad_alloc.
    RecordReader(ChunkReader& reader, std::uint64_t& bytesLeft, std::uint64_t position, std::uint64_t length,
                 std::uint64_t pieceSize = kLargestPiece);

    // Bytes not yet taken, as far as known.
    std::uint64_t remaining() const { return m_piece.size() + m_left; }

    // True if a piece that the file should have was not read: the read failed, or the budget was used up.
    bool wasRefused() const { return m_refused; }

    // The record at the front; bytes missing from the file are zero.
    template <typename Record>
    Record head() {
        Record record{};
        const std::size_t part = std::min(sizeof record, m_piece.size());
        std::copy_n(m_piece.data(), part, reinterpret_cast<std::uint8_t*>(&record));
        m_piece = m_piece.subspan(part);
        return record;
    }

    // Returns the next records, at most `count`, valid until the next call; empty at the end. An incomplete last
    // record is padded with zeros. Piece sizes and what was taken before must be whole records.
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
    std::uint64_t m_position;  // of the part that is not yet in the piece
    std::uint64_t m_left;
    std::uint64_t m_pieceSize;
    std::span<const std::uint8_t> m_piece;  // the part of the piece that is not yet taken
    bool m_refused = false;
};
