// What the host expects in the buffers of each pixel format that the importer delivers. Repeated here in the host's
// terms, so that a wrong row in the importer's own table is detected.
#pragma once

#include "sdk/SdkPixelFormat.h"

#include <cstdint>
#include <span>

namespace pixels {

inline constexpr std::uint32_t kRec601 = 1;
inline constexpr std::uint32_t kRec709 = 2;
inline constexpr std::uint32_t kLimited = 1;
inline constexpr std::uint32_t kFull = 2;

// The order of components in memory, from the lowest address.
enum class Packing {
    yuyv,
    uyvy,
    vuya,       // also with a fixed last byte
    bgra,
    argb,
    v210,       // six pixels in four words of three 10-bit components
    rgb10,      // one word, red in the highest bits
    bgra16,
};

struct HostFormat {
    PrPixelFormat code;
    Packing packing;
    bool isRgb;
    bool hasAlpha;              // if false, a fourth component is opaque
    std::uint32_t bits;         // per component
    std::uint32_t white;        // largest code of a component
    std::uint32_t colorSpace;   // of YUV
    std::uint32_t range;
};

// All formats, in the order in which the importer offers them.
std::span<const HostFormat> hostFormats();

// The format with this code. Throws std::invalid_argument if there is none.
const HostFormat& hostFormat(PrPixelFormat code);

// Bytes in a row without padding.
std::size_t rowPixelBytes(const HostFormat& format, std::uint32_t width);

}  // namespace pixels
