#include "avi/RecordReader.h"

RecordReader::RecordReader(ChunkReader& reader, std::uint64_t& bytesLeft, std::uint64_t position, std::uint64_t length,
                           std::uint64_t pieceSize)
    : m_reader(reader),
      m_bytesLeft(bytesLeft),
      m_position(position),
      m_left(reader.existing(position, length)),
      m_pieceSize(pieceSize) {
    readPiece();
}

void RecordReader::readPiece() {
    const std::uint64_t wanted = std::min(m_left, m_pieceSize);
    m_piece = take(m_bytesLeft, wanted) ? m_reader.readPiece(m_position, wanted) : std::span<const std::uint8_t>{};
    m_refused = wanted > 0 && m_piece.empty();
    m_position += wanted;
    m_left = m_piece.size() == wanted ? m_left - wanted : 0;
}
