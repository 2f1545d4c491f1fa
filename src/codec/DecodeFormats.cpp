#include "codec/DecodeFormats.h"

#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>

QuorvaneFormat decodeRequest(const FormatInfo& info) {
    QuorvaneFormat request = preparedFormat();
    request.type = info.quoType;
    request.flags = (info.isTopLeft() ? 0u : kQuorvaneFlip) | (info.isAdobe16u() ? kQuorvaneRange32768 : 0u);
    request.colorSpace = info.colorSpace;
    request.range = info.isLimitedRange() ? kQuorvaneLimitedRange : kQuorvaneFullRange;
    return request;
}

csSDK_int32 queryStream(CodecInstance& codec, const std::vector<std::uint8_t>& compressedFormat,
                        QuorvaneFormat& format) {
    try {
        format = codec.decompressQuery(compressedFormat);
        return imNoErr;
    } catch (const std::exception& error) {
        Log("Decompress query failed: %s", error.what());
        return imBadFile;
    }
}

csSDK_int32 findSubType(std::uint32_t type, SubTypeInfo& subType) {
    try {
        subType = GetSubTypeInfo_by_quoTypeComp(type);
        return imNoErr;
    } catch (const std::runtime_error&) {
        Log("Unknown compressed type: %s (%s)", codecTypeName(type).c_str(), std::to_string(type).c_str());
        return imOtherErr;
    }
}

csSDK_int32 findDecodeFormats(const std::vector<std::uint8_t>& compressedFormat, std::vector<FormatInfo>& formats) {
    CodecInstance codec;   // keeps probes away from the stream's own instance
    formats.clear();
    std::ranges::copy_if(FormatInfos(), std::back_inserter(formats), [&](const FormatInfo& info) {
        return codec.canDecompress(compressedFormat, decodeRequest(info));
    });

    QuorvaneFormat stream;
    if (const csSDK_int32 result = queryStream(codec, compressedFormat, stream); result != imNoErr) {
        return result;
    }
    SubTypeInfo subType;
    if (const csSDK_int32 result = findSubType(stream.type, subType); result != imNoErr) {
        return result;
    }
    const auto isPreferred = [&](const FormatInfo& info) {
        return std::ranges::find(subType.preferredFormats, info.pixelFormat) != subType.preferredFormats.end();
    };
    if (std::ranges::any_of(formats, isPreferred)) {
        std::erase_if(formats, std::not_fn(isPreferred));
    }

    Log("Decode formats:");
    for (const FormatInfo& info : formats) {
        Log("    %s [%s]", PixelFormatName(info.pixelFormat), FourCCToString(info.pixelFormat, false).c_str());
    }
    if (formats.empty()) {
        Log("No formats to decode into: decodeFormats is empty");
        return imBadFile;
    }
    return imNoErr;
}
