#include "avirepair/Window.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace avirepair {

namespace {

constexpr std::size_t kSmallest = 4096;
constexpr std::size_t kLargest = std::size_t{1} << 20;

}  // namespace

Window::Window(fileio::File& file)
    : m_file(file), m_size(static_cast<std::uint64_t>(std::max<std::int64_t>(file.size(), 0))) {}

std::span<const std::uint8_t> Window::at(std::uint64_t position, std::size_t count) {
    if (position >= m_size) {
        return {};
    }
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_size - position));
    if (position < m_begin || position + count > m_begin + m_filled) {
        const bool goesOn = position >= m_begin && position <= m_begin + m_filled;
        m_piece = std::max(goesOn ? std::min(2 * m_piece, kLargest) : kSmallest, count);
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(m_piece, m_size - position));
        m_buffer.resize(std::max(m_buffer.size(), wanted));
        m_filled = 0;
        if (!m_file.seek(static_cast<std::int64_t>(position)) || m_file.read(m_buffer.data(), wanted) != wanted) {
            throw std::runtime_error("the file cannot be read at byte " + std::to_string(position));
        }
        m_begin = position;
        m_filled = wanted;
    }
    return {m_buffer.data() + (position - m_begin), count};
}

}  // namespace avirepair
