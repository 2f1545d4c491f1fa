// Four-character codes of pixel formats.
#include "abidump/Tables.h"

namespace abidump {

std::vector<Number> pixelFormats() {
    return {
        NUMBER(PrPixelFormat_Any), NUMBER(PrPixelFormat_V210_422_10u_601), NUMBER(PrPixelFormat_V210_422_10u_709),
        NUMBER(PrPixelFormat_RGB_444_10u), NUMBER(PrPixelFormat_NTSCDV100_1080i), NUMBER(PrPixelFormat_PALDV100_1080i),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_601),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_601),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_601),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_601), NUMBER(PrPixelFormat_NTSCDV25),
        NUMBER(PrPixelFormat_PALDV25), NUMBER(PrPixelFormat_YUYV_422_8u_601), NUMBER(PrPixelFormat_YUYV_422_8u_709),
        NUMBER(PrPixelFormat_NTSCDV50), NUMBER(PrPixelFormat_PALDV50),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_709),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_709),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_709),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_709), NUMBER(PrPixelFormat_NTSCDV100_720p),
        NUMBER(PrPixelFormat_VUYP_4444_32f_709), NUMBER(PrPixelFormat_VUYP_4444_8u_709),
        NUMBER(PrPixelFormat_PALDV100_720p), NUMBER(PrPixelFormat_UYVY_422_32f_709),
        NUMBER(PrPixelFormat_UYVY_422_8u_709), NUMBER(PrPixelFormat_VUYX_4444_32f_709),
        NUMBER(PrPixelFormat_VUYX_4444_8u_709), NUMBER(PrPixelFormat_VUYA_4444_8u_709),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_709_FullRange),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_709_FullRange),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_709_FullRange),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_709_FullRange),
        NUMBER(PrPixelFormat_BGRA_4444_32f_Linear), NUMBER(PrPixelFormat_ARGB_4444_32f_Linear),
        NUMBER(PrPixelFormat_PRGB_4444_32f_Linear), NUMBER(PrPixelFormat_XRGB_4444_32f_Linear),
        NUMBER(PrPixelFormat_BGRP_4444_32f_Linear), NUMBER(PrPixelFormat_BGRX_4444_32f_Linear),
        NUMBER(PrPixelFormat_VUYA_4444_32f_709), NUMBER(PrPixelFormat_BGRA_4444_32f),
        NUMBER(PrPixelFormat_BGRA_4444_16u), NUMBER(PrPixelFormat_BGRA_4444_8u), NUMBER(PrPixelFormat_VUYA_4444_32f),
        NUMBER(PrPixelFormat_VUYA_4444_16u), NUMBER(PrPixelFormat_VUYA_4444_8u), NUMBER(PrPixelFormat_ARGB_4444_32f),
        NUMBER(PrPixelFormat_PRGB_4444_32f), NUMBER(PrPixelFormat_XRGB_4444_32f), NUMBER(PrPixelFormat_ARGB_4444_16u),
        NUMBER(PrPixelFormat_PRGB_4444_16u), NUMBER(PrPixelFormat_XRGB_4444_16u), NUMBER(PrPixelFormat_ARGB_4444_8u),
        NUMBER(PrPixelFormat_PRGB_4444_8u), NUMBER(PrPixelFormat_XRGB_4444_8u),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FRAME_PICTURE_PLANAR_8u_601_FullRange),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_601_FullRange), NUMBER(PrPixelFormat_Invalid),
        NUMBER(PrPixelFormat_YUV_420_MPEG4_FIELD_PICTURE_PLANAR_8u_601_FullRange),
        NUMBER(PrPixelFormat_YUV_420_MPEG2_FIELD_PICTURE_PLANAR_8u_601_FullRange), NUMBER(PrPixelFormat_BGRP_4444_32f),
        NUMBER(PrPixelFormat_BGRP_4444_16u), NUMBER(PrPixelFormat_BGRP_4444_8u), NUMBER(PrPixelFormat_VUYP_4444_32f),
        NUMBER(PrPixelFormat_VUYP_4444_8u), NUMBER(PrPixelFormat_Raw), NUMBER(PrPixelFormat_BGRX_4444_32f),
        NUMBER(PrPixelFormat_BGRX_4444_16u), NUMBER(PrPixelFormat_BGRX_4444_8u), NUMBER(PrPixelFormat_VUYX_4444_32f),
        NUMBER(PrPixelFormat_VUYX_4444_8u), NUMBER(PrPixelFormat_UYVY_422_32f_601),
        NUMBER(PrPixelFormat_UYVY_422_8u_601),
    };
}

}  // namespace abidump
