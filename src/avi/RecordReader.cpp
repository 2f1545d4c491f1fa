#include "avi/RecordReader.h"

#include <algorithm>
#include <cstring>

RecordReader::RecordReader(ChunkReader& reader, std::uint64_t position, std::uint64_t length,
                           std::uint64_t largestPiece)
    : m_reader(reader),
      m_position(position),
      m_left(reader.existing(position, length)),
      m_pieceSize(std::min(m_left, largestPiece)),
      m_piece(reader.pieceRoom(static_cast<std::size_t>(m_pieceSize))) {
    readPiece();
}

bool RecordReader::readPiece() {
    const std::uint64_t wanted = std::min(m_left, m_pieceSize);
    m_taken = 0;
    m_filled = m_reader.readDirect(m_position, m_piece, wanted);
    m_denied = wanted > 0 && m_filled == 0;
    m_position += m_filled;
    m_left = m_filled == wanted ? m_left - wanted : 0;
    return m_filled > 0;
}

void RecordReader::take(void* destination, std::size_t count) {
    auto* bytes = static_cast<std::uint8_t*>(destination);
    std::size_t done = 0;
    while (done < count && (m_taken < m_filled || (m_left > 0 && readPiece()))) {
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(count - done, m_filled - m_taken));
        std::memcpy(bytes + done, m_piece + m_taken, part);
        m_taken += part;
        done += part;
    }
}
