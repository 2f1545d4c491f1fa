// The host's pixel formats: four-character codes, first character in the lowest byte.
#pragma once

#include "sdk/SdkPixelFormatList.h"
#include "sdk/SdkTypes.h"

enum PrPixelFormat : csSDK_uint32 {
    PrPixelFormat_Any = 0,
#define ENUMERATOR(name, code, ...) PrPixelFormat_##name = fourCC(code),
    QUORVANE_PIXEL_FORMATS(ENUMERATOR)
#undef ENUMERATOR
};
