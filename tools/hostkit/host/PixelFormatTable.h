// What the host knows about each of its pixel formats.
#pragma once

#include "hostkit/host/HostProfile.h"
#include "sdk/SdkPixelFormat.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace hostkit {

enum class PixelLayout {
    Packed,         // groups of pixels, one after another
    Planar420,      // a plane of luma, two of chroma at half size in both directions
    Compressed,     // one block of fixed size
    Unknown,        // no size can be given
};

struct PixelFormatRow {
    PrPixelFormat format;
    const char* name;           // as the host's vocabulary spells it
    PixelLayout layout;
    int groupPixels;            // packed: pixels in one group ...
    int groupBytes;             // ... and its bytes; compressed: bytes of the whole frame
    bool hasAlpha;
    bool isTopLeft;             // the first row in memory is the top one
};

const std::vector<PixelFormatRow>& pixelFormats();

// Null for a code that is not in the table.
const PixelFormatRow* findPixelFormat(csSDK_uint32 code);
std::string_view pixelFormatName(csSDK_uint32 code);       // "????" for a code that is not in the table

// Bytes of a row's pixels, without padding; packed and planar (luma) formats only, else nothing.
std::optional<csSDK_int32> tightRowBytes(const PixelFormatRow& row, csSDK_int32 width);

// Bytes from one row to the next.
std::optional<csSDK_int32> rowBytes(const PixelFormatRow& row, csSDK_int32 width, RowBytesPolicy policy);

// Bytes of a whole frame; nothing for formats without a size and for sizes that no frame has.
std::optional<csSDK_int32> frameBytes(const PixelFormatRow& row, csSDK_int32 width, csSDK_int32 height,
                                      RowBytesPolicy policy);

}  // namespace hostkit
