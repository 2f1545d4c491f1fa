// The library's texts for its numbers.
#pragma once

#include <cstdint>

namespace standin {

// The text of a value in a QuorvaneStringCategory; for an unknown value, one that begins with "unknown". Never null,
// never destroyed.
const char* nameOf(std::uint32_t category, std::uint32_t value);

// The text for unknown values of a category, or of an unknown category.
const char* unknownName(std::uint32_t category);

}  // namespace standin
