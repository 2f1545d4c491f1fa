// The compressed types: what a stream of each holds.
#pragma once

#include "standin/Encoder.h"

#include <cstdint>

namespace standin {

struct CompressedType {
    std::uint32_t number;
    const char* name;
    TypeLayout layout;
};

// The type of a number, null for a number that is none. The row lives for ever.
const CompressedType* findCompressedType(std::uint32_t number);

// An unfilled plane with the width and height of component `index` of a picture.
Plane planeShape(const TypeLayout& layout, std::uint32_t width, std::uint32_t height, std::uint32_t index);

// Bounds of a picture. Sixteen times the width of HD is wider than any camera; the area holds 8K twice over and
// keeps a decoded picture, four planes of 16-bit samples, within half a gigabyte.
constexpr std::uint32_t kMaxSide = 16384;
constexpr std::uint64_t kMaxArea = std::uint64_t{1} << 26;

// Whether both sides are at least 1 and within the bounds.
bool areGoodDimensions(std::uint32_t width, std::uint32_t height);

}  // namespace standin
