// The bytes of a written sample, to be changed where the writer would refuse to.
#pragma once

#include "aviwriter/Blocks.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace importhost::validate {

// Four bytes, the lowest first, in place of those at `at`. Throws std::out_of_range behind the end.
inline void put32(aviwriter::Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

// Where a code such as "movi" stands first; the size when it does not.
inline std::size_t positionOf(const aviwriter::Bytes& bytes, std::string_view code) {
    const auto found = std::search(bytes.begin(), bytes.end(), code.begin(), code.end());
    return static_cast<std::size_t>(found - bytes.begin());
}

}  // namespace importhost::validate
