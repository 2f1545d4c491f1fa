#include "codec/PixelFormatTables.h"

#include "codec/CodecInstance.h"
#include "host/HostSuite.h"
#include "host/Vocabulary.h"
#include "text/FourCC.h"

#include <stdexcept>
#include <string>

namespace {

// Sets, in ascending order of value. Greyscale also prefers the packed formats: the host has no grey format.
constexpr PrPixelFormat kPacked422[] = {
    PrPixelFormat_YUYV_422_8u_601, PrPixelFormat_YUYV_422_8u_709,
    PrPixelFormat_UYVY_422_8u_709, PrPixelFormat_UYVY_422_8u_601,
};
constexpr PrPixelFormat kPacked444[] = {PrPixelFormat_VUYX_4444_8u_709, PrPixelFormat_VUYX_4444_8u};
constexpr PrPixelFormat kPacked4444[] = {PrPixelFormat_VUYA_4444_8u_709, PrPixelFormat_VUYA_4444_8u};

constexpr SubTypeInfo kSubTypes[] = {
    {fourCC("AR8Q"), u"Quorvane 8-bit RGBA", 102, 1, 1, ColorModel::RgbAlpha, {}},
    {fourCC("GR8Q"), u"Quorvane 8-bit RGB", 101, 1, 1, ColorModel::Rgb, {}},
    {fourCC("AY8Q"), u"Quorvane 8-bit YUVA 4:4:4:4", 106, 1, 1, ColorModel::YuvAlpha, kPacked4444},
    {fourCC("4Y8Q"), u"Quorvane 8-bit YUV 4:4:4", 103, 1, 1, ColorModel::Yuv, kPacked444},
    {fourCC("2Y8Q"), u"Quorvane 8-bit YUV 4:2:2", 104, 2, 1, ColorModel::Yuv, kPacked422},
    {fourCC("0Y8Q"), u"Quorvane 8-bit YUV 4:2:0", 105, 2, 2, ColorModel::Yuv, kPacked422},
    {fourCC("0G8Q"), u"Quorvane 8-bit YUV 4:0:0 greyscale", 107, 1, 1, ColorModel::Yuv, kPacked422},
    {fourCC("AR0Q"), u"Quorvane 10-bit RGBA", 110, 1, 1, ColorModel::RgbAlpha, {}},
    {fourCC("GR0Q"), u"Quorvane 10-bit RGB", 109, 1, 1, ColorModel::Rgb, {}},
    {fourCC("4Y0Q"), u"Quorvane 10-bit YUV 4:4:4", 118, 1, 1, ColorModel::Yuv, {}},
    {fourCC("2Y0Q"), u"Quorvane 10-bit YUV 4:2:2", 108, 2, 1, ColorModel::Yuv, {}},
    {fourCC("0G0Q"), u"Quorvane 10-bit YUV 4:0:0 greyscale", 115, 1, 1, ColorModel::Yuv, {}},
    {fourCC("AR2Q"), u"Quorvane 12-bit RGBA", 112, 1, 1, ColorModel::RgbAlpha, {}},
    {fourCC("GR2Q"), u"Quorvane 12-bit RGB", 111, 1, 1, ColorModel::Rgb, {}},
    {fourCC("AR4Q"), u"Quorvane 14-bit RGBA", 114, 1, 1, ColorModel::RgbAlpha, {}},
    {fourCC("GR4Q"), u"Quorvane 14-bit RGB", 113, 1, 1, ColorModel::Rgb, {}},
};

constexpr FormatInfo kDecodeFormats[] = {
    {PrPixelFormat_YUYV_422_8u_601, "YUYV 4:2:2 [8] Rec.601", 4, kQuorvaneRec601, kLimitedRange},
    {PrPixelFormat_YUYV_422_8u_709, "YUYV 4:2:2 [8] Rec.709", 4, kQuorvaneRec709, kLimitedRange},
    {PrPixelFormat_UYVY_422_8u_601, "UYVY 4:2:2 [8] Rec.601", 5, kQuorvaneRec601, kLimitedRange},
    {PrPixelFormat_UYVY_422_8u_709, "UYVY 4:2:2 [8] Rec.709", 5, kQuorvaneRec709, kLimitedRange},
    {PrPixelFormat_VUYA_4444_8u, "VUYA 4:4:4:4 [8] Rec.601", 50, kQuorvaneRec601, kLimitedRange},
    {PrPixelFormat_VUYA_4444_8u_709, "VUYA 4:4:4:4 [8] Rec.709", 50, kQuorvaneRec709, kLimitedRange},
    {PrPixelFormat_VUYX_4444_8u, "VUYX 4:4:4 [8] Rec.601", 49, kQuorvaneRec601, kLimitedRange},
    {PrPixelFormat_VUYX_4444_8u_709, "VUYX 4:4:4 [8] Rec.709", 49, kQuorvaneRec709, kLimitedRange},
    {PrPixelFormat_BGRA_4444_8u, "BGRA [8]", 2, kQuorvaneRec709, 0},
    {PrPixelFormat_ARGB_4444_8u, "ARGB [8]", 19, kQuorvaneRec709, 0},
    {PrPixelFormat_BGRX_4444_8u, "BGRX [8]", 1, kQuorvaneRec709, 0},
    {PrPixelFormat_XRGB_4444_8u, "XRGB [8]", 16, kQuorvaneRec709, 0},
    {PrPixelFormat_V210_422_10u_601, "v210 4:2:2 [10] Rec.601", 11, kQuorvaneRec601, kLimitedRange},
    {PrPixelFormat_V210_422_10u_709, "v210 4:2:2 [10] Rec.709", 11, kQuorvaneRec709, kLimitedRange},
    {PrPixelFormat_RGB_444_10u, "RGB [10]", 15, kQuorvaneRec709, 0},
    {PrPixelFormat_BGRA_4444_16u, "BGRA [16]", 31, kQuorvaneRec709, kIsAdobe16u},
    {PrPixelFormat_BGRX_4444_16u, "BGRX [16]", 32, kQuorvaneRec709, kIsAdobe16u},
};

std::span<const SubTypeInfo> subTypeInfos;
std::span<const FormatInfo> formatInfos;

}  // namespace

void BuildPixelFormatTables(SPBasicSuite* basicSuite) {
    // A host that cannot describe its pixel formats cannot be served: fail now, not at the first frame.
    HostSuite<PrSDKImageProcessingSuite> imageProcessing(basicSuite, kPrSDKImageProcessingSuite,
                                                         kPrSDKImageProcessingSuiteVersion);
    imageProcessing.get();
    imageProcessing.release();
    if (formatInfos.empty()) {   // after a second init, decodes may be reading the tables
        subTypeInfos = kSubTypes;
        formatInfos = kDecodeFormats;
    }
}

std::span<const SubTypeInfo> SubTypeInfos() {
    return subTypeInfos;
}

std::span<const FormatInfo> FormatInfos() {
    return formatInfos;
}

const FormatInfo& GetFormatInfo_by_pixelFormat(std::uint32_t pixelFormat) {
    for (const FormatInfo& info : formatInfos) {
        if (info.pixelFormat == pixelFormat) {
            return info;
        }
    }
    throw std::runtime_error("GetFormatInfo_by_pixelFormat(): pixel format not found: " +
                             std::string(PixelFormatName(pixelFormat)) + " [" + FourCCToString(pixelFormat, false) +
                             "]");
}

const SubTypeInfo& GetSubTypeInfo_by_quoTypeComp(std::uint32_t quoTypeComp) {
    for (const SubTypeInfo& info : subTypeInfos) {
        if (info.quoTypeComp == quoTypeComp) {
            return info;
        }
    }
    throw std::runtime_error("GetSubTypeInfo_by_quoTypeComp(): type not found: " + codecTypeName(quoTypeComp) + " (" +
                             std::to_string(quoTypeComp) + ")");
}
