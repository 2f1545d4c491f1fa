#include "pixels/HostFormats.h"

#include "hostkit/host/PixelFormatTable.h"

#include <stdexcept>

namespace pixels {

namespace {

constexpr HostFormat yuv8(char a, char b, char c, char d, Packing packing, bool hasAlpha, std::uint32_t colorSpace) {
    return {PrPixelFormat{fourCC({a, b, c, d, 0})}, packing, false, hasAlpha, 8, 255, colorSpace, kLimited};
}

constexpr HostFormat rgb8(char a, char b, char c, char d, Packing packing, bool hasAlpha) {
    return {PrPixelFormat{fourCC({a, b, c, d, 0})}, packing, true, hasAlpha, 8, 255, kRec709, kFull};
}

constexpr HostFormat kDeliveredFormats[] = {
    yuv8('y', 'u', 'y', '2', Packing::yuyv, false, kRec601),
    yuv8('y', 'u', 'y', '3', Packing::yuyv, false, kRec709),
    yuv8('u', 'y', 'v', 'y', Packing::uyvy, false, kRec601),
    yuv8('u', 'y', 'v', '7', Packing::uyvy, false, kRec709),
    yuv8('v', 'u', 'y', 'a', Packing::vuya, true, kRec601),
    yuv8('V', 'U', 'Y', 'A', Packing::vuya, true, kRec709),
    yuv8('v', 'u', 'y', 'x', Packing::vuya, false, kRec601),
    yuv8('v', 'u', 'x', '7', Packing::vuya, false, kRec709),
    rgb8('b', 'g', 'r', 'a', Packing::bgra, true),
    rgb8('a', 'r', 'g', 'b', Packing::argb, true),
    rgb8('b', 'g', 'r', 'x', Packing::bgra, false),
    rgb8('x', 'r', 'g', 'b', Packing::argb, false),
    {PrPixelFormat_V210_422_10u_601, Packing::v210, false, false, 10, 1023, kRec601, kLimited},
    {PrPixelFormat_V210_422_10u_709, Packing::v210, false, false, 10, 1023, kRec709, kLimited},
    {PrPixelFormat_RGB_444_10u, Packing::rgb10, true, false, 10, 1023, kRec709, kFull},
    {PrPixelFormat_BGRA_4444_16u, Packing::bgra16, true, true, 16, 32768, kRec709, kFull},
    {PrPixelFormat_BGRX_4444_16u, Packing::bgra16, true, false, 16, 32768, kRec709, kFull},
};

}  // namespace

std::span<const HostFormat> hostFormats() { return kDeliveredFormats; }

const HostFormat& hostFormat(PrPixelFormat code) {
    for (const HostFormat& format : kDeliveredFormats) {
        if (format.code == code) {
            return format;
        }
    }
    throw std::invalid_argument("the importer delivers no such pixel format");
}

std::size_t rowPixelBytes(const HostFormat& format, std::uint32_t width) {
    const hostkit::PixelFormatRow& row = *hostkit::findPixelFormat(format.code);
    return static_cast<std::size_t>(hostkit::tightRowBytes(row, static_cast<csSDK_int32>(width)).value());
}

}  // namespace pixels
