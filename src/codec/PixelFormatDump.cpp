#include "codec/PixelFormatDump.h"

#include "codec/CodecInstance.h"
#include "codec/PixelFormatTables.h"
#include "codec/QuorvaneError.h"
#include "host/HostSuite.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"
#include "text/Utf.h"

namespace {

constexpr PrPixelFormat kLoggedFormats[] = {
#define FORMAT(name, ...) PrPixelFormat_##name,
    QUORVANE_PIXEL_FORMATS(FORMAT)
#undef FORMAT
};

// The codec numbers its uncompressed types from 1 to this.
constexpr std::uint32_t kLastCodecType = 50;

// The buffer size is asked for one row of this many pixels.
constexpr csSDK_int32 kProbeWidth = 128;

char flagCharacter(prSuiteError error, prBool flag) {
    if (error < 0) {
        return '?';
    }
    return flag != kPrFalse ? '1' : ' ';
}

void dumpHostFormat(const PrSDKImageProcessingSuite& suite, PrPixelFormat format) {
    prBool isCompressed = kPrFalse;
    prBool hasAlpha = kPrFalse;
    prBool isTopLeft = kPrFalse;
    csSDK_int32 bytes = 0;
    const prSuiteError compressedError = suite.FormatIsCompressed(format, &isCompressed);
    const prSuiteError alphaError = suite.FormatHasAlpha(format, &hasAlpha);
    const prSuiteError topLeftError = suite.FormatIsOriginTopLeft(format, &isTopLeft);
    suite.GetSizeForPixelBuffer(format, kProbeWidth, 1, &bytes);
    Log("[%s] : %c %c %c -  %s (err: %x %x %x) - %d", FourCCToString(format, false).c_str(),
        flagCharacter(compressedError, isCompressed), flagCharacter(alphaError, hasAlpha),
        flagCharacter(topLeftError, isTopLeft), PixelFormatName(format), static_cast<unsigned>(compressedError),
        static_cast<unsigned>(alphaError), static_cast<unsigned>(topLeftError), bytes);
}

void dumpHostFormats(const PrSDKImageProcessingSuite& suite) {
    Log("----");
    Log("Pixel formats ([fcc] : isCompressed hasAlpha isTopLeft - name):");
    for (const PrPixelFormat format : kLoggedFormats) {
        dumpHostFormat(suite, format);
    }
}

// A codec that fails to answer for a type counts as "no".
const char* codecAnswer(CodecInstance& codec, QuorvaneParameter parameter, std::uint32_t type) {
    std::uint32_t value = type;
    try {
        codec.getParam(parameter, value);
    } catch (const QuorvaneError&) {
        value = 0;
    }
    return value != 0 ? "YES" : " NO";
}

void dumpCodecTypes() {
    Log("----");
    Log("Quorvane types (can_flip supports_0_32768_range : format):");
    CodecInstance codec;
    for (std::uint32_t type = 1; type <= kLastCodecType; ++type) {
        const char* canFlip = codecAnswer(codec, kQuorvaneCanFlip, type);
        const char* supportsRange = codecAnswer(codec, kQuorvaneSupportsRange32768, type);
        Log("%s %s : %s", canFlip, supportsRange, codecTypeName(type).c_str());
    }
}

void dumpSubTypes() {
    Log("----");
    Log("SubTypeInfos: (subType : quoTypeComp : subTypeName)");
    for (const SubTypeInfo& info : SubTypeInfos()) {
        Log("[%s] : (%d) %-15s : '%s'", FourCCToString(info.subType, false).c_str(),
            static_cast<int>(info.quoTypeComp), codecTypeName(info.quoTypeComp).c_str(),
            utf8FromUtf16(info.subTypeName).c_str());
        for (const PrPixelFormat preferred : info.preferredFormats) {
            Log("    <- %s", PixelFormatName(preferred));
        }
    }
}

void dumpFormats() {
    Log("----");
    Log("FormatInfos: (pixelFormat : quoType : colorSpace : isAdobe16u : isTopLeft)");
    for (const FormatInfo& info : FormatInfos()) {
        Log("[%s] %-35s : (%2d) %-10s : (%d) %-8s : %s : %s", FourCCToString(info.pixelFormat, false).c_str(),
            info.name, static_cast<int>(info.quoType), codecTypeName(info.quoType).c_str(),
            static_cast<int>(info.colorSpace), codecColorSpaceName(info.colorSpace).c_str(),
            info.isAdobe16u() ? "1" : " ", info.isTopLeft() ? "1" : " ");
    }
}

}  // namespace

void DumpPixelFormats(SPBasicSuite* basicSuite) {
    HostSuite<PrSDKImageProcessingSuite> imageProcessing(basicSuite, kPrSDKImageProcessingSuite,
                                                         kPrSDKImageProcessingSuiteVersion);
    const PrSDKImageProcessingSuite* suite = imageProcessing.get();
    if (LogEnabled()) {
        dumpHostFormats(*suite);
        dumpCodecTypes();
        dumpSubTypes();
        dumpFormats();
    }
    imageProcessing.release();
}

QuorvaneFormat ProbeEncoder(const QuorvaneFormat& input) {
    std::uint64_t further = 0;
    return CodecInstance().compressQuery(input, further);
}
