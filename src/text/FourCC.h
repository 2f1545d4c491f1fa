// Four-character codes: four bytes in file order, compared and stored as a little-endian 32-bit value.
#pragma once

#include <cstdint>
#include <string>

/// The value of a code written as text: fourCC("AVI ") is 0x20495641.
constexpr std::uint32_t fourCC(const char (&text)[5]) {
    const auto byte = [&text](int i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])); };
    return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
}

/// The code as text for messages and logs: its four bytes, lowest first, or highest first when `reversed` is true.
/// A letter, digit, punctuation mark or blank stands as it is, any other byte as its value in brackets: "[0]".
/// At most 20 characters. Any thread. Does not depend on the locale.
std::string FourCCToString(std::uint32_t value, bool reversed);
