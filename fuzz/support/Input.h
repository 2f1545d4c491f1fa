// An input of the fuzzers: the bytes of a file, then a script that says how the file is read and what is asked of it,
// and in the last byte the script's length. If the stated length does not fit, the whole input is the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace fuzz {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

inline constexpr std::size_t kLongestScript = 120;

struct Input {
    ByteView file;
    ByteView script;
};

// The parts point into `bytes`.
Input splitInput(ByteView bytes);

// The script's length must not exceed kLongestScript.
Bytes joinInput(ByteView file, ByteView script);

// Returns the script's bytes one after another, and zeros after its end.
class Script {
public:
    explicit Script(ByteView bytes) : m_left(bytes) {}

    bool atEnd() const { return m_left.empty(); }
    std::uint8_t next8();
    std::uint16_t next16();
    std::uint32_t next32();

    // A number from 0 to `bound` - 1.
    std::uint32_t below(std::uint32_t bound) { return next8() % bound; }

private:
    ByteView m_left;
};

}  // namespace fuzz
