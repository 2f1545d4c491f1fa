#include "codec/DecodeFormats.h"

#include <algorithm>
#include <iterator>

QuorvaneFormat decodeRequest(const FormatInfo& info) {
    QuorvaneFormat request = preparedFormat();
    request.type = info.quoType;
    request.flags = (info.isTopLeft() ? 0u : kQuorvaneFlip) | (info.isAdobe16u() ? kQuorvaneRange32768 : 0u);
    request.colorSpace = info.colorSpace;
    request.range = info.isLimitedRange() ? kQuorvaneLimitedRange : kQuorvaneFullRange;
    return request;
}

std::vector<FormatInfo> findDecodeFormats(CodecInstance& codec, const std::vector<std::uint8_t>& compressedFormat) {
    std::vector<FormatInfo> found;
    std::ranges::copy_if(FormatInfos(), std::back_inserter(found), [&](const FormatInfo& info) {
        return codec.canDecompress(compressedFormat, decodeRequest(info));
    });
    return found;
}

std::vector<FormatInfo> preferredFormats(const SubTypeInfo& subType, const std::vector<FormatInfo>& formats) {
    std::vector<FormatInfo> preferred;
    std::ranges::copy_if(formats, std::back_inserter(preferred), [&](const FormatInfo& info) {
        return std::ranges::find(subType.preferredFormats, info.pixelFormat) != subType.preferredFormats.end();
    });
    return preferred.empty() ? formats : preferred;
}
