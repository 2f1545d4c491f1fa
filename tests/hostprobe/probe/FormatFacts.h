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

    csSDK_int32 tightRowBytes(csSDK_int32 width) const { return (width + groupPixels - 1) / groupPixels * groupBytes; }
};

inline constexpr FormatFacts kFormatFacts[] = {
    {PrPixelFormat_BGRA_4444_8u, 1, 4, true, true},    {PrPixelFormat_BGRX_4444_8u, 1, 4, false, true},
    {PrPixelFormat_ARGB_4444_16u, 1, 8, true, true},   {PrPixelFormat_BGRA_4444_32f, 1, 16, true, true},
    {PrPixelFormat_VUYA_4444_8u, 1, 4, true, true},    {PrPixelFormat_VUYX_4444_32f_709, 1, 16, false, true},
    {PrPixelFormat_YUYV_422_8u_601, 2, 4, false, false}, {PrPixelFormat_UYVY_422_8u_709, 2, 4, false, false},
    {PrPixelFormat_V210_422_10u_709, 6, 16, false, false},
};

}  // namespace hostprobe
