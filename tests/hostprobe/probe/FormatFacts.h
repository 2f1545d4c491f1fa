// The pixel formats that the probe tries out, and what is known of them.
#pragma once

#include "sdk/SdkPixelFormat.h"

namespace hostprobe {

struct FormatFacts {
    PrPixelFormat format;
    csSDK_int32 groupPixels;
    csSDK_int32 groupBytes;
    bool hasAlpha;
    bool isBottomUp;            // known for formats of four full components; the host's own texts differ on the others

    constexpr csSDK_int32 tightRowBytes(csSDK_int32 width) const {
        return (width + groupPixels - 1) / groupPixels * groupBytes;
    }
};

constexpr FormatFacts factsOf(PrPixelFormat format) {
#define FORMAT(name, code, layout, groupPixels, groupBytes, hasAlpha, isTopLeft) \
    if (format == PrPixelFormat_##name) return {format, groupPixels, groupBytes, hasAlpha, (groupPixels) == 1};
    QUORVANE_PIXEL_FORMATS(FORMAT)
#undef FORMAT
    return {};
}

inline constexpr FormatFacts kFormatFacts[] = {
    factsOf(PrPixelFormat_BGRA_4444_8u),      factsOf(PrPixelFormat_BGRX_4444_8u),
    factsOf(PrPixelFormat_ARGB_4444_16u),     factsOf(PrPixelFormat_BGRA_4444_32f),
    factsOf(PrPixelFormat_VUYA_4444_8u),      factsOf(PrPixelFormat_VUYX_4444_32f_709),
    factsOf(PrPixelFormat_YUYV_422_8u_601),   factsOf(PrPixelFormat_UYVY_422_8u_709),
    factsOf(PrPixelFormat_V210_422_10u_709),
};

}  // namespace hostprobe
