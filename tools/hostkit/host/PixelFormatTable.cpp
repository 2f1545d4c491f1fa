#include "hostkit/host/PixelFormatTable.h"

#include <algorithm>
#include <limits>

namespace hostkit {

namespace {

// The name in the table is the enumerator's own, so the two cannot drift apart.
#define ROW(name, layout, groupPixels, groupBytes, hasAlpha, isTopLeft) \
    PixelFormatRow { PrPixelFormat_##name, "PrPixelFormat_" #name, PixelLayout::layout, groupPixels, groupBytes, \
                     hasAlpha, isTopLeft }

constexpr PixelFormatRow kRows[] = {
    ROW(Any, Unknown, 0, 0, false, false),
    ROW(V210_422_10u_601, Packed, 6, 16, false, false),
    ROW(V210_422_10u_709, Packed, 6, 16, false, false),
    ROW(RGB_444_10u, Packed, 1, 4, false, false),
    ROW(NTSCDV100_1080i, Compressed, 0, 480000, false, true),
    ROW(PALDV100_1080i, Compressed, 0, 576000, false, true),
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_601, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_601, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_601, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_601, Planar420, 1, 1, false, true),
    ROW(NTSCDV25, Compressed, 0, 120000, false, true),
    ROW(PALDV25, Compressed, 0, 144000, false, true),
    ROW(YUYV_422_8u_601, Packed, 2, 4, false, false),
    ROW(YUYV_422_8u_709, Packed, 2, 4, false, false),
    ROW(NTSCDV50, Compressed, 0, 240000, false, true),
    ROW(PALDV50, Compressed, 0, 288000, false, true),
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_709, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_709, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_709, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_709, Planar420, 1, 1, false, true),
    ROW(NTSCDV100_720p, Compressed, 0, 240000, false, true),
    ROW(VUYP_4444_32f_709, Packed, 1, 16, true, false),
    ROW(VUYP_4444_8u_709, Packed, 1, 4, true, false),
    ROW(PALDV100_720p, Compressed, 0, 288000, false, true),
    ROW(UYVY_422_32f_709, Packed, 2, 16, false, false),
    ROW(UYVY_422_8u_709, Packed, 2, 4, false, false),
    ROW(VUYX_4444_32f_709, Packed, 1, 16, false, false),
    ROW(VUYX_4444_8u_709, Packed, 1, 4, false, false),
    ROW(VUYA_4444_8u_709, Packed, 1, 4, true, false),
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_709_FullRange, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_709_FullRange, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_709_FullRange, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_709_FullRange, Planar420, 1, 1, false, true),
    ROW(BGRA_4444_32f_Linear, Packed, 1, 16, true, false),
    ROW(ARGB_4444_32f_Linear, Packed, 1, 16, true, false),
    ROW(PRGB_4444_32f_Linear, Packed, 1, 16, true, false),
    ROW(XRGB_4444_32f_Linear, Packed, 1, 16, false, false),
    ROW(BGRP_4444_32f_Linear, Packed, 1, 16, true, false),
    ROW(BGRX_4444_32f_Linear, Packed, 1, 16, false, false),
    ROW(VUYA_4444_32f_709, Packed, 1, 16, true, false),
    ROW(BGRA_4444_32f, Packed, 1, 16, true, false),
    ROW(BGRA_4444_16u, Packed, 1, 8, true, false),
    ROW(BGRA_4444_8u, Packed, 1, 4, true, false),
    ROW(VUYA_4444_32f, Packed, 1, 16, true, false),
    ROW(VUYA_4444_16u, Packed, 1, 8, true, false),
    ROW(VUYA_4444_8u, Packed, 1, 4, true, false),
    ROW(ARGB_4444_32f, Packed, 1, 16, true, false),
    ROW(PRGB_4444_32f, Packed, 1, 16, true, false),
    ROW(XRGB_4444_32f, Packed, 1, 16, false, false),
    ROW(ARGB_4444_16u, Packed, 1, 8, true, false),
    ROW(PRGB_4444_16u, Packed, 1, 8, true, false),
    ROW(XRGB_4444_16u, Packed, 1, 8, false, false),
    ROW(ARGB_4444_8u, Packed, 1, 4, true, false),
    ROW(PRGB_4444_8u, Packed, 1, 4, true, false),
    ROW(XRGB_4444_8u, Packed, 1, 4, false, false),
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_601_FullRange, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_601_FullRange, Planar420, 1, 1, false, true),
    ROW(Invalid, Unknown, 0, 0, false, false),
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_601_FullRange, Planar420, 1, 1, false, true),
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_601_FullRange, Planar420, 1, 1, false, true),
    ROW(BGRP_4444_32f, Packed, 1, 16, true, false),
    ROW(BGRP_4444_16u, Packed, 1, 8, true, false),
    ROW(BGRP_4444_8u, Packed, 1, 4, true, false),
    ROW(VUYP_4444_32f, Packed, 1, 16, true, false),
    ROW(VUYP_4444_8u, Packed, 1, 4, true, false),
    ROW(Raw, Unknown, 0, 0, false, false),
    ROW(BGRX_4444_32f, Packed, 1, 16, false, false),
    ROW(BGRX_4444_16u, Packed, 1, 8, false, false),
    ROW(BGRX_4444_8u, Packed, 1, 4, false, false),
    ROW(VUYX_4444_32f, Packed, 1, 16, false, false),
    ROW(VUYX_4444_8u, Packed, 1, 4, false, false),
    ROW(UYVY_422_32f_601, Packed, 2, 16, false, false),
    ROW(UYVY_422_8u_601, Packed, 2, 4, false, false),
};

#undef ROW

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
