#include "hostkit/host/PixelFormatTable.h"

#include <algorithm>
#include <limits>

namespace hostkit {

namespace {

constexpr PixelFormatRow kRows[] = {
    {PrPixelFormat_Any, "PrPixelFormat_Any", PixelLayout::Unknown, 0, 0, false, false},
#define ROW(name, code, layout, ...) {PrPixelFormat_##name, "PrPixelFormat_" #name, PixelLayout::layout, __VA_ARGS__},
    QUORVANE_PIXEL_FORMATS(ROW)
#undef ROW
};

// What one frame may take; wide enough for any picture, and its products stay within 64 bits.
constexpr csSDK_int32 kLargestSide = 1 << 20;

constexpr csSDK_int64 kOddPadding = 13;

csSDK_int64 padded(csSDK_int64 tight, RowBytesPolicy policy) {
    switch (policy) {
        case RowBytesPolicy::Tight: return tight;
        case RowBytesPolicy::Odd: return tight + kOddPadding;
        case RowBytesPolicy::RoundedTo128: break;
    }
    return (tight + 127) / 128 * 128;
}

std::optional<csSDK_int32> asInt32(csSDK_int64 bytes) {
    if (bytes > std::numeric_limits<csSDK_int32>::max()) {
        return std::nullopt;
    }
    return static_cast<csSDK_int32>(bytes);
}

bool isSide(csSDK_int32 side) { return side > 0 && side <= kLargestSide; }

}  // namespace

const std::vector<PixelFormatRow>& pixelFormats() {
    static const std::vector<PixelFormatRow> rows(std::begin(kRows), std::end(kRows));
    return rows;
}

const PixelFormatRow* findPixelFormat(csSDK_uint32 code) {
    const auto found = std::find_if(std::begin(kRows), std::end(kRows),
                                    [code](const PixelFormatRow& row) { return row.format == code; });
    return found == std::end(kRows) ? nullptr : found;
}

std::string_view pixelFormatName(csSDK_uint32 code) {
    const PixelFormatRow* row = findPixelFormat(code);
    return row ? row->name : "????";
}

std::optional<csSDK_int32> tightRowBytes(const PixelFormatRow& row, csSDK_int32 width) {
    const bool hasRows = row.layout == PixelLayout::Packed || row.layout == PixelLayout::Planar420;
    if (!hasRows || !isSide(width)) {
        return std::nullopt;
    }
    return (width + row.groupPixels - 1) / row.groupPixels * row.groupBytes;
}

std::optional<csSDK_int32> rowBytes(const PixelFormatRow& row, csSDK_int32 width, RowBytesPolicy policy) {
    const std::optional<csSDK_int32> tight = tightRowBytes(row, width);
    // The planes of a planar format have no padding: nothing tells a plug-in where the next plane would start.
    return tight && row.layout == PixelLayout::Packed ? asInt32(padded(*tight, policy)) : tight;
}

std::optional<csSDK_int32> frameBytes(const PixelFormatRow& row, csSDK_int32 width, csSDK_int32 height,
                                      RowBytesPolicy policy) {
    if (row.layout == PixelLayout::Unknown || !isSide(width) || !isSide(height)) {
        return std::nullopt;
    }
    if (row.layout == PixelLayout::Compressed) {
        return row.groupBytes;
    }
    const csSDK_int64 rows = csSDK_int64{rowBytes(row, width, policy).value_or(0)} * height;
    const csSDK_int64 chroma =
        row.layout == PixelLayout::Planar420 ? csSDK_int64{(width + 1) / 2} * ((height + 1) / 2) * 2 : 0;
    return asInt32(rows + chroma);
}

}  // namespace hostkit
