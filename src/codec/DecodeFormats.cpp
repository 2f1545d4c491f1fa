#include "codec/DecodeFormats.h"

#include "codec/CodecInstance.h"
#include "codec/QuorvaneError.h"

#include <algorithm>
#include <iterator>

namespace {

bool canDecodeInto(CodecInstance& codec, const std::vector<std::uint8_t>& compressedFormat, const FormatInfo& info) {
    const QuorvaneFormat request = decodeRequest(info);
    try {
        codec.decompressQuery(compressedFormat, &request);
        return true;
    } catch (const QuorvaneError&) {
        return false;
    }
}

bool prefers(const SubTypeInfo& subType, const FormatInfo& info) {
    return std::ranges::find(subType.preferredFormats, info.pixelFormat) != subType.preferredFormats.end();
}

}  // namespace

QuorvaneFormat decodeRequest(const FormatInfo& info) {
    QuorvaneFormat request = preparedFormat();
    request.type = info.quoType;
    request.flags = (info.isTopLeft() ? 0u : kQuorvaneFlip) | (info.isAdobe16u() ? kQuorvaneRange32768 : 0u);
    request.colorSpace = info.colorSpace;
    request.range = info.isLimitedRange() ? kQuorvaneLimitedRange : kQuorvaneFullRange;
    return request;
}

std::vector<FormatInfo> findDecodeFormats(const std::vector<std::uint8_t>& compressedFormat) {
    CodecInstance codec;   // the stream's own instance stays free of probes
    std::vector<FormatInfo> candidates;
    for (const FormatInfo& info : FormatInfos()) {
        if (canDecodeInto(codec, compressedFormat, info)) {
            candidates.push_back(info);
        }
    }

    const QuorvaneFormat stream = codec.decompressQuery(compressedFormat, nullptr);
    const SubTypeInfo& subType = GetSubTypeInfo_by_quoTypeComp(stream.type);
    std::vector<FormatInfo> preferred;
    std::ranges::copy_if(candidates, std::back_inserter(preferred),
                         [&](const FormatInfo& info) { return prefers(subType, info); });
    return preferred.empty() ? candidates : preferred;
}
