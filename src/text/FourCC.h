// Four-character codes: four bytes in file order, compared and stored as a little-endian 32-bit value.
#pragma once

#include "sdk/SdkTypes.h"   // fourCC

#include <cstdint>
#include <string>

// The code as text for messages and logs: its four bytes, lowest first, or highest first if `reversed`. A letter,
// digit, punctuation mark or blank is printed as it is, any other byte as its value in brackets: "[0]". At most 20
// characters. Thread-safe. Independent of the locale.
std::string FourCCToString(std::uint32_t value, bool reversed);
