#include "standin/CompressedTypes.h"

#include <stdexcept>
#include <string>

namespace standin {
namespace {

constexpr TypeLayout rgb(std::uint32_t bits) {
    return {.planeCount = 3, .bitDepth = bits, .rgb = true};
}

constexpr TypeLayout rgba(std::uint32_t bits) {
    return {.planeCount = 4, .bitDepth = bits, .rgb = true, .alpha = true};
}

constexpr TypeLayout yuv(std::uint32_t bits, std::uint32_t xSubsampling, std::uint32_t ySubsampling) {
    return {.planeCount = 3, .bitDepth = bits, .xSubsampling = xSubsampling, .ySubsampling = ySubsampling};
}

constexpr TypeLayout grey(std::uint32_t bits) {
    return {.planeCount = 1, .bitDepth = bits};
}

constexpr CompressedType kCompressedTypes[] = {
    {101, "RGB 8", rgb(8)},
    {102, "RGBA 8", rgba(8)},
    {103, "YUV 4:4:4 8", yuv(8, 1, 1)},
    {104, "YUV 4:2:2 8", yuv(8, 2, 1)},
    {105, "YUV 4:2:0 8", yuv(8, 2, 2)},
    {106, "YUVA 4:4:4:4 8", {.planeCount = 4, .bitDepth = 8, .alpha = true}},
    {107, "YUV 4:0:0 8", grey(8)},
    {108, "YUV 4:2:2 10", yuv(10, 2, 1)},
    {109, "RGB 10", rgb(10)},
    {110, "RGBA 10", rgba(10)},
    {111, "RGB 12", rgb(12)},
    {112, "RGBA 12", rgba(12)},
    {113, "RGB 14", rgb(14)},
    {114, "RGBA 14", rgba(14)},
    {115, "YUV 4:0:0 10", grey(10)},
    {118, "YUV 4:4:4 10", yuv(10, 1, 1)},
};

}  // namespace

const CompressedType* findCompressedType(std::uint32_t number) {
    for (const CompressedType& type : kCompressedTypes) {
        if (type.number == number)
            return &type;
    }
    return nullptr;
}

TypeLayout typeLayout(std::uint32_t type) {
    const CompressedType* row = findCompressedType(type);
    if (!row)
        throw std::invalid_argument("unknown compressed type " + std::to_string(type));
    return row->layout;
}

Plane planeShape(const TypeLayout& layout, std::uint32_t width, std::uint32_t height, std::uint32_t index) {
    const bool isChroma = !layout.rgb && (index == 1 || index == 2);
    const std::uint32_t x = isChroma ? layout.xSubsampling : 1;
    const std::uint32_t y = isChroma ? layout.ySubsampling : 1;
    return {(width + x - 1) / x, (height + y - 1) / y, {}};
}

bool areGoodDimensions(std::uint32_t width, std::uint32_t height) {
    return width >= 1 && width <= kMaxSide && height >= 1 && height <= kMaxSide
        && std::uint64_t{width} * height <= kMaxArea;
}

}  // namespace standin
