// The Time, Image Processing, Error and PPix Cache Suites, and the list of all suites.
#include "hostkit/host/HostTables.h"
#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/system/Text.h"

#include <cmath>
#include <string_view>

namespace hostkit {

namespace {

// A success that says the value had to be rounded.
constexpr prSuiteError kSuiteRounded = 0x00020000;

// --- Time Suite -------------------------------------------------------------------------------------------------

struct VideoRate {
    PrTime rate;
    PrTime scale;
};

// In the order of the host's enumeration, which starts at 1.
constexpr VideoRate kVideoRates[] = {{24000, 1001}, {24, 1}, {25, 1}, {30000, 1001}, {30, 1}, {50, 1}, {60000, 1001},
                                     {60, 1}};

prSuiteError getTicksPerSecond(PrTime* outTicks) {
    const auto forced = enter(HostCall::GetTicksPerSecond);
    if (!forced) {
        *outTicks = Host::current().profile().ticksPerSecond;
    }
    return forced.value_or(kSuiteNoError);
}

prSuiteError getTicksPerVideoFrame(csSDK_int32 rate, PrTime* outTicks) {
    if (const auto forced = enter(HostCall::GetTicksPerVideoFrame, rate)) {
        return *forced;
    }
    if (rate < 1 || rate > static_cast<csSDK_int32>(std::size(kVideoRates))) {
        return kSuiteInvalidParms;
    }
    const VideoRate& row = kVideoRates[rate - 1];
    *outTicks = Host::current().profile().ticksPerSecond * row.scale / row.rate;
    return kSuiteNoError;
}

prSuiteError getTicksPerAudioSample(float rate, PrTime* outTicks) {
    if (const auto forced = enter(HostCall::GetTicksPerAudioSample, rate)) {
        return *forced;
    }
    if (!(rate > 0.0f)) {
        return kSuiteInvalidParms;
    }
    const double exact = static_cast<double>(Host::current().profile().ticksPerSecond) / static_cast<double>(rate);
    *outTicks = std::llround(exact);
    return exact == std::floor(exact) ? kSuiteNoError : kSuiteRounded;
}

// --- Image Processing Suite -------------------------------------------------------------------------------------

template <class Answer>
prSuiteError askFormat(HostCall call, PrPixelFormat format, Answer answer) {
    if (const auto forced = enter(call, codeText(format))) {
        return *forced;
    }
    const PixelFormatRow* row = findPixelFormat(format);
    if (!row || row->format == PrPixelFormat_Any || row->format == PrPixelFormat_Invalid) {
        return kSuiteInvalidParms;
    }
    return answer(*row);
}

prSuiteError formatIsCompressed(PrPixelFormat format, prBool* out) {
    return askFormat(HostCall::FormatIsCompressed, format, [out](const PixelFormatRow& row) {
        *out = row.layout == PixelLayout::Compressed || row.layout == PixelLayout::Unknown;
        return kSuiteNoError;
    });
}

prSuiteError formatHasAlpha(PrPixelFormat format, prBool* out) {
    return askFormat(HostCall::FormatHasAlpha, format, [out](const PixelFormatRow& row) {
        *out = row.hasAlpha;
        return kSuiteNoError;
    });
}

prSuiteError formatIsOriginTopLeft(PrPixelFormat format, prBool* out) {
    return askFormat(HostCall::FormatIsOriginTopLeft, format, [out](const PixelFormatRow& row) {
        *out = row.isTopLeft;
        return kSuiteNoError;
    });
}

prSuiteError getSizeForPixelBuffer(PrPixelFormat format, csSDK_int32 width, csSDK_int32 height, csSDK_int32* out) {
    return askFormat(HostCall::GetSizeForPixelBuffer, format, [&](const PixelFormatRow& row) {
        const auto bytes = frameBytes(row, width, height, Host::current().profile().rowBytes);
        if (bytes) {
            *out = *bytes;
        }
        return bytes ? kSuiteNoError : kSuiteInvalidParms;
    });
}

prSuiteError scaleConvert(PrPixelFormat, csSDK_uint32, csSDK_uint32, csSDK_uint32, csSDK_int32, const void*,
                          PrPixelFormat, csSDK_uint32, csSDK_uint32, csSDK_uint32, csSDK_int32, void*, csSDK_int32) {
    return enter(HostCall::ScaleConvert).value_or(kSuiteNotImplemented);
}

prSuiteError compressDV100720p(PrPixelFormat, csSDK_uint32, csSDK_uint32, csSDK_uint32, const void*, PrPixelFormat,
                               csSDK_size_t, void*, csSDK_int32, csSDK_int32) {
    return enter(HostCall::CompressDV100720p).value_or(kSuiteNotImplemented);
}

prSuiteError stampDVFrameAspect(PrPixelFormat, void*, csSDK_int32, prBool) {
    return enter(HostCall::StampDVFrameAspect).value_or(kSuiteNotImplemented);
}

// --- Error Suite ------------------------------------------------------------------------------------------------

prSuiteError setEventString(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    const ErrorEvent event{type, toUtf8(std::u16string_view(title)), toUtf8(std::u16string_view(text))};
    const auto forced = enter(HostCall::SetEventString, type, ", '", event.title, "', '", event.text, "'");
    if (!forced) {
        Host::current().addErrorEvent(event);
    }
    return forced.value_or(kSuiteNoError);
}

// --- PPix Cache Suite -------------------------------------------------------------------------------------------

void cacheFunction() { enter(HostCall::PPixCacheCall); }

const PrSDKPPixCacheSuite* cacheTable() {
    static const PrSDKPPixCacheSuite table = [] {
        PrSDKPPixCacheSuite filled = {};
        for (auto& function : filled.functions) {
            function = cacheFunction;
        }
        return filled;
    }();
    return &table;
}

constexpr PrSDKTimeSuite kTimeTable = {getTicksPerSecond, getTicksPerVideoFrame, getTicksPerAudioSample};
constexpr PrSDKImageProcessingSuite kImageProcessingTable = {formatIsCompressed, formatHasAlpha,
                                                             formatIsOriginTopLeft, getSizeForPixelBuffer,
                                                             scaleConvert, compressDV100720p, stampDVFrameAspect};
constexpr PrSDKErrorSuite3 kErrorTable = {setEventString};

}  // namespace

const void* suiteTable(const char* name, csSDK_int32 version) {
    struct Row {
        std::string_view name;
        csSDK_int32 version;
        const void* table;
    };
    const Row rows[] = {
        {kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion, framesCreatorTable()},
        {kPrSDKPPixSuite, kPrSDKPPixSuiteVersion, framesTable()},
        {kPrSDKPPixCacheSuite, kPrSDKPPixCacheSuiteVersion, cacheTable()},
        {kPrSDKTimeSuite, kPrSDKTimeSuiteVersion, &kTimeTable},
        {kPrSDKImageProcessingSuite, kPrSDKImageProcessingSuiteVersion, &kImageProcessingTable},
        {kPrSDKAudioSuite, kPrSDKAudioSuiteVersion, audioTable()},
        {kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3, &kErrorTable},
    };
    for (const Row& row : rows) {
        if (row.name == name && (row.version == version || version == kEveryVersion)) {
            return row.table;
        }
    }
    return nullptr;
}

}  // namespace hostkit
