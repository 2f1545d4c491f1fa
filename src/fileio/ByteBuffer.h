// Bytes read from a file: a buffer that only grows and is never cleared before a read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

class ByteBuffer {
public:
    ByteBuffer() = default;
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;

    // Makes room for `size` bytes; growing discards the contents. Throws std::bad_alloc.
    void growTo(std::size_t size) {
        if (size > m_size) {
            m_bytes.reset();
            m_size = 0;
            m_bytes = std::make_unique_for_overwrite<std::uint8_t[]>(size);
            m_size = size;
        }
    }

    std::uint8_t* data() { return m_bytes.get(); }
    const std::uint8_t* data() const { return m_bytes.get(); }
    std::size_t size() const { return m_size; }

private:
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::size_t m_size = 0;
};
