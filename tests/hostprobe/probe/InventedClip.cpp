#include "probe/InventedClip.h"

#include <cstring>

namespace hostprobe {

namespace {

// A slope of blue and green with a red bar that moves, the bottom row first.
void paintBgra(char* row, csSDK_int32 fromBottom, csSDK_int64 frame) {
    for (csSDK_int32 x = 0; x < kWidth; ++x) {
        const bool isBar = x / 4 == frame;
        row[4 * x] = static_cast<char>(x * 5);
        row[4 * x + 1] = static_cast<char>(fromBottom * 9);
        row[4 * x + 2] = static_cast<char>(isBar ? 255 : 0);
        row[4 * x + 3] = static_cast<char>(255);
    }
}

}  // namespace

void paint(char* pixels, csSDK_int32 rowBytes, csSDK_int32 height, PrPixelFormat format, csSDK_int64 frame) {
    for (csSDK_int32 y = 0; y < height; ++y) {
        char* row = pixels + static_cast<std::ptrdiff_t>(y) * rowBytes;
        std::memset(row, static_cast<int>(64 + frame * 8 + y), static_cast<std::size_t>(rowBytes));
        if (format == PrPixelFormat_BGRA_4444_8u) {
            paintBgra(row, y, frame);
        }
    }
}

}  // namespace hostprobe
