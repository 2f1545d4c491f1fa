// Bytes of a file at any position, read in pieces: small ones where the caller hops, larger and larger ones where it
// goes on from byte to byte.
#pragma once

#include "fileio/File.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace avirepair {

class Window {
public:
    // The file must be open for reading and outlive the window.
    explicit Window(fileio::File& file);

    std::uint64_t size() const { return m_size; }

    // `count` bytes at `position`, fewer only at the end of the file. Valid until the next call. Throws
    // std::runtime_error when the file has the bytes and does not deliver them.
    std::span<const std::uint8_t> at(std::uint64_t position, std::size_t count);

private:
    fileio::File& m_file;
    std::uint64_t m_size;
    std::uint64_t m_begin = 0;      // of the bytes in the buffer
    std::size_t m_filled = 0;
    std::size_t m_piece = 0;        // bytes of the last read
    std::vector<std::uint8_t> m_buffer;
};

// Little-endian numbers, as AVI files have them. The bytes must be there.
inline std::uint32_t u16In(std::span<const std::uint8_t> bytes, std::size_t at) {
    return bytes[at] | std::uint32_t{bytes[at + 1]} << 8;
}
inline std::uint32_t u32In(std::span<const std::uint8_t> bytes, std::size_t at) {
    return u16In(bytes, at) | u16In(bytes, at + 2) << 16;
}
inline std::uint64_t u64In(std::span<const std::uint8_t> bytes, std::size_t at) {
    return u32In(bytes, at) | std::uint64_t{u32In(bytes, at + 4)} << 32;
}

constexpr std::uint32_t fourcc(const char (&code)[5]) {
    return static_cast<std::uint8_t>(code[0]) | std::uint32_t{static_cast<std::uint8_t>(code[1])} << 8 |
           std::uint32_t{static_cast<std::uint8_t>(code[2])} << 16 |
           std::uint32_t{static_cast<std::uint8_t>(code[3])} << 24;
}

}  // namespace avirepair
