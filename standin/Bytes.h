// Little-endian numbers in byte buffers, for any byte order and alignment.
#pragma once

#include <cstdint>

namespace standin {

inline std::uint32_t load16(const std::uint8_t* at) {
    return static_cast<std::uint32_t>(at[0] | at[1] << 8);
}

inline std::uint32_t load32(const std::uint8_t* at) {
    return load16(at) | load16(at + 2) << 16;
}

inline void store16(std::uint8_t* at, std::uint32_t value) {
    at[0] = static_cast<std::uint8_t>(value);
    at[1] = static_cast<std::uint8_t>(value >> 8);
}

inline void store32(std::uint8_t* at, std::uint32_t value) {
    store16(at, value);
    store16(at + 2, value >> 16);
}

}  // namespace standin
