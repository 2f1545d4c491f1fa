// The compressed types, and what a stream of each contains.
#pragma once

#include "standin/Encoder.h"

#include <cstdint>

namespace standin {

struct CompressedType {
    std::uint32_t number;
    const char* name;
    TypeLayout layout;
};

// The type with this number, or null if it is unknown. The row is never destroyed.
const CompressedType* findCompressedType(std::uint32_t number);

// An empty plane with the width and height of component `index` of a picture.
Plane planeShape(const TypeLayout& layout, std::uint32_t width, std::uint32_t height, std::uint32_t index);

// Maximum picture size. 16384 pixels are wider than any camera; the area is twice that of 8K and limits a decoded
// picture, four planes of 16-bit samples, to half a gigabyte.
constexpr std::uint32_t kMaxSide = 16384;
constexpr std::uint64_t kMaxArea = std::uint64_t{1} << 26;

// True if both sides are at least 1 and within these limits.
bool areGoodDimensions(std::uint32_t width, std::uint32_t height);

}  // namespace standin
