// The host's pixel formats but PrPixelFormat_Any, in the order in which the log lists them. From it come the enumeration,
// the names, the log's list, the played host's table and the numbers that abidump prints.
//   ROW(name, code, layout, groupPixels, groupBytes, hasAlpha, isTopLeft)
// A layout is Packed (groups of pixels, one after another), Planar420 (a plane of luma, two of chroma of half its width
// and height), Compressed (one block, of groupBytes) or Unknown.
#pragma once

#define QUORVANE_PIXEL_FORMATS(ROW) \
    ROW(BGRA_4444_8u, "bgra", Packed, 1, 4, true, false) \
    ROW(VUYA_4444_8u, "vuya", Packed, 1, 4, true, false) \
    ROW(VUYA_4444_8u_709, "VUYA", Packed, 1, 4, true, false) \
    ROW(ARGB_4444_8u, "argb", Packed, 1, 4, true, false) \
    ROW(BGRX_4444_8u, "bgrx", Packed, 1, 4, false, false) \
    ROW(VUYX_4444_8u, "vuyx", Packed, 1, 4, false, false) \
    ROW(VUYX_4444_8u_709, "vux7", Packed, 1, 4, false, false) \
    ROW(XRGB_4444_8u, "xrgb", Packed, 1, 4, false, false) \
    ROW(BGRP_4444_8u, "bgrp", Packed, 1, 4, true, false) \
    ROW(VUYP_4444_8u, "vuyp", Packed, 1, 4, true, false) \
    ROW(VUYP_4444_8u_709, "vup7", Packed, 1, 4, true, false) \
    ROW(PRGB_4444_8u, "prgb", Packed, 1, 4, true, false) \
    ROW(BGRA_4444_16u, "Bgra", Packed, 1, 8, true, false) \
    ROW(VUYA_4444_16u, "Vuya", Packed, 1, 8, true, false) \
    ROW(ARGB_4444_16u, "Argb", Packed, 1, 8, true, false) \
    ROW(BGRX_4444_16u, "Bgrx", Packed, 1, 8, false, false) \
    ROW(XRGB_4444_16u, "Xrgb", Packed, 1, 8, false, false) \
    ROW(BGRP_4444_16u, "Bgrp", Packed, 1, 8, true, false) \
    ROW(PRGB_4444_16u, "Prgb", Packed, 1, 8, true, false) \
    ROW(BGRA_4444_32f, "BGra", Packed, 1, 16, true, false) \
    ROW(VUYA_4444_32f, "VUya", Packed, 1, 16, true, false) \
    ROW(VUYA_4444_32f_709, "vUYa", Packed, 1, 16, true, false) \
    ROW(ARGB_4444_32f, "ARgb", Packed, 1, 16, true, false) \
    ROW(BGRX_4444_32f, "BGrx", Packed, 1, 16, false, false) \
    ROW(VUYX_4444_32f, "VUyx", Packed, 1, 16, false, false) \
    ROW(VUYX_4444_32f_709, "VUx7", Packed, 1, 16, false, false) \
    ROW(XRGB_4444_32f, "XRgb", Packed, 1, 16, false, false) \
    ROW(BGRP_4444_32f, "BGrp", Packed, 1, 16, true, false) \
    ROW(VUYP_4444_32f, "VUyp", Packed, 1, 16, true, false) \
    ROW(VUYP_4444_32f_709, "VUp7", Packed, 1, 16, true, false) \
    ROW(PRGB_4444_32f, "PRgb", Packed, 1, 16, true, false) \
    ROW(RGB_444_10u, "RGB1", Packed, 1, 4, false, false) \
    ROW(YUYV_422_8u_601, "yuy2", Packed, 2, 4, false, false) \
    ROW(YUYV_422_8u_709, "yuy3", Packed, 2, 4, false, false) \
    ROW(UYVY_422_8u_601, "uyvy", Packed, 2, 4, false, false) \
    ROW(UYVY_422_8u_709, "uyv7", Packed, 2, 4, false, false) \
    ROW(V210_422_10u_601, "v210", Packed, 6, 16, false, false) \
    ROW(V210_422_10u_709, "v211", Packed, 6, 16, false, false) \
    ROW(UYVY_422_32f_601, "UYvy", Packed, 2, 16, false, false) \
    ROW(UYVY_422_32f_709, "UYv7", Packed, 2, 16, false, false) \
    ROW(BGRA_4444_32f_Linear, "BGaL", Packed, 1, 16, true, false) \
    ROW(BGRP_4444_32f_Linear, "BGpL", Packed, 1, 16, true, false) \
    ROW(BGRX_4444_32f_Linear, "BGxL", Packed, 1, 16, false, false) \
    ROW(ARGB_4444_32f_Linear, "ARgL", Packed, 1, 16, true, false) \
    ROW(PRGB_4444_32f_Linear, "PRgL", Packed, 1, 16, true, false) \
    ROW(XRGB_4444_32f_Linear, "XRgL", Packed, 1, 16, false, false) \
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_601, "yv12", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_601, "yvi2", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_601_FullRange, "yv1f", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_601_FullRange, "yvif", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_709, "yv17", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_709, "yvi7", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_709_FullRange, "yv1F", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_709_FullRange, "yviF", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_601, "Yv12", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_601, "Yvi2", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_601_FullRange, "Yv1f", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_601_FullRange, "Yvif", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_709, "Yv17", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_709, "Yvi7", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_709_FullRange, "Yv1F", Planar420, 1, 1, false, true) \
    ROW(YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_709_FullRange, "YviF", Planar420, 1, 1, false, true) \
    ROW(NTSCDV25, "dvn2", Compressed, 0, 120000, false, true) \
    ROW(PALDV25, "dvp2", Compressed, 0, 144000, false, true) \
    ROW(NTSCDV50, "dvn5", Compressed, 0, 240000, false, true) \
    ROW(PALDV50, "dvp5", Compressed, 0, 288000, false, true) \
    ROW(NTSCDV100_720p, "dvn7", Compressed, 0, 240000, false, true) \
    ROW(PALDV100_720p, "dvp7", Compressed, 0, 288000, false, true) \
    ROW(NTSCDV100_1080i, "dvn1", Compressed, 0, 480000, false, true) \
    ROW(PALDV100_1080i, "dvp1", Compressed, 0, 576000, false, true) \
    ROW(Raw, "raww", Unknown, 0, 0, false, false) \
    ROW(Invalid, "badf", Unknown, 0, 0, false, false)
