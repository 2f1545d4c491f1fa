// The texts that the library gives for its numbers.
#pragma once

#include <cstdint>

namespace standin {

// The text of a value in a QuorvaneStringCategory; one that begins with "unknown" for a value that is none.
// Never null, lives for ever.
const char* nameOf(std::uint32_t category, std::uint32_t value);

// What unknown values of a category, or of an unknown category, are called.
const char* unknownName(std::uint32_t category);

}  // namespace standin
