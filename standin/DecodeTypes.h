// The types that frames are decoded into: interleaved rows of one plane, made of groups of pixels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace standin {

// One row of converted pixels, one array per component: R, G, B or Y, Cb, Cr, all at full width. `count` is a whole
// number of groups; pixels beyond the picture's width repeat its last pixel.
struct PixelRow {
    std::array<const std::uint16_t*, 3> color;
    const std::uint16_t* alpha;
    std::size_t count;
};

struct DecodeType {
    std::uint32_t number;
    const char* name;
    bool rgb;
    bool alpha;                     // if false, a fourth component is written as opaque
    std::uint32_t bitDepth;
    std::uint32_t groupPixels;
    std::uint32_t groupBytes;
    std::uint32_t compressedType;   // the encoder's type for this format
    void (*pack)(const PixelRow& row, std::uint8_t* out);
};

std::span<const DecodeType> decodeTypes();

// The type with this number, or null if it is unknown. The row is never destroyed.
const DecodeType* findDecodeType(std::uint32_t number);

// Size in bytes of a row of `width` pixels, at most 8 * kMaxSide.
std::uint32_t packedRowBytes(const DecodeType& type, std::uint32_t width);

}  // namespace standin
