#include "standin/Request.h"

#include "standin/Result.h"

namespace standin {
namespace {

constexpr std::uint32_t kWord2 = 254;
constexpr std::uint32_t kWord3 = 1;

// The caller keeps word 8 but does not interpret it; a nonzero value shows whether it was kept.
constexpr std::uint32_t kWord8 = 0x00010000;

constexpr std::uint32_t kKnownFlags = kQuorvaneFlip | kQuorvaneRange32768;

}  // namespace

Target checkRequest(const QuorvaneFormat& request) {
    require(request.word2 == kWord2 && request.word3 == kWord3 && request.word8 == 0, Result::kRequestWords);
    require(request.width == 0 && request.height == 0, Result::kRequestDimensions);
    const DecodeType* type = findDecodeType(request.type);
    require(type != nullptr, Result::kRequestType);
    require((request.flags & ~kKnownFlags) == 0, Result::kRequestFlags);
    const bool to32768 = (request.flags & kQuorvaneRange32768) != 0;
    require(!to32768 || type->bitDepth == 16, Result::kRequestScale);
    require(request.colorSpace == kQuorvaneRec601 || request.colorSpace == kQuorvaneRec709, Result::kRequestColorSpace);
    require(request.range == kQuorvaneLimitedRange || request.range == kQuorvaneFullRange, Result::kRequestRange);
    require(!type->rgb || request.range == kQuorvaneFullRange, Result::kRequestRgbRange);
    return {.type = type, .flip = (request.flags & kQuorvaneFlip) != 0, .to32768 = to32768,
            .colorSpace = request.colorSpace, .range = request.range};
}

QuorvaneFormat describeStream(const StreamInfo& info) {
    return {.width = info.width, .height = info.height, .word2 = kWord2, .word3 = kWord3, .type = info.type,
            .flags = 0, .colorSpace = info.colorSpace, .range = info.range, .word8 = kWord8};
}

QuorvaneFormat describeDelivery(const StreamInfo& info, const Target& target) {
    const std::uint32_t flags = (target.flip ? std::uint32_t{kQuorvaneFlip} : 0u)
                              | (target.to32768 ? std::uint32_t{kQuorvaneRange32768} : 0u);
    return {.width = info.width, .height = info.height, .word2 = kWord2, .word3 = kWord3, .type = target.type->number,
            .flags = flags, .colorSpace = target.colorSpace, .range = target.range, .word8 = kWord8};
}

bool isPreparedOutput(const QuorvaneFormat& output) {
    return output.width == 0 && output.height == 0 && output.word2 == kWord2 && output.word3 == kWord3
        && output.type == 0 && output.flags == 0 && output.colorSpace == 0 && output.range == 0 && output.word8 == 0;
}

}  // namespace standin
