#include "wrong/Fault.h"

#include <algorithm>

namespace wrong {

namespace {

csSDK_int32 offersAFormatTwice(const Call& call) {
    const csSDK_int32 result = call.pass();
    const bool isEnd = result == imBadFormatIndex && call.index() > 0 && call.index() < 20;
    return isEnd ? call.passWith(nullptr, call.param2) : result;
}

csSDK_int32 offersOtherFormatsLater(const Call& call) {
    static int lists = 0;
    const bool isLater = call.index() == 0 && lists++ % 2 == 1;
    return isLater ? call.passWith(reinterpret_cast<void*>(std::uintptr_t{1}), call.param2) : call.pass();
}

csSDK_int32* labelsIn(const Call& call) {
    return reinterpret_cast<csSDK_int32*>(static_cast<char*>(call.param2) +
                                          offsetof(imGetAudioChannelLayoutRec, outChannelLabels));
}

// The analysis text's buffer.
std::span<char> textIn(const Call& call) {
    const auto& record = call.record<imAnalysisRec>();
    return {record.buffer, static_cast<std::size_t>(std::max(csSDK_int32{record.buffersize}, 0))};
}

// Changes each sample that the real plug-in returns.
Answer rates(void (*change)(imDataSample& sample)) {
    return after(imDataRateAnalysis, [=](const Call& call, csSDK_int32 result) {
        auto& record = call.record<imDataRateAnalysisRec>();
        if (result == imNoErr && record.buffer) {
            const std::size_t samples = static_cast<std::size_t>(record.buffersize) / sizeof(imDataSample);
            std::for_each(record.buffer, record.buffer + samples, change);
        }
    });
}

// A buffer that is too small stays as it was.
csSDK_int32 tellsRatesToWholeListsOnly(const Call& call) {
    static csSDK_int32 wholeList = 0;
    auto& record = call.record<imDataRateAnalysisRec>();
    if (record.buffer && record.buffersize < wholeList) {
        return imNoErr;
    }
    const csSDK_int32 result = call.pass();
    wholeList = record.buffer ? wholeList : csSDK_int32{record.buffersize};
    return result;
}

// Claims room for one more sample.
csSDK_int32 fillsMoreThanTheBuffer(const Call& call) {
    auto& record = call.record<imDataRateAnalysisRec>();
    const csSDK_int32 more = record.buffer ? static_cast<csSDK_int32>(sizeof(imDataSample)) : 0;
    record.buffersize += more;
    const csSDK_int32 result = call.pass();
    record.buffersize -= more;
    return result;
}

const Fault kListFaults[] = {
    // --- Pixel formats ---
    {"offers-a-format-twice", on(imGetIndPixelFormat, offersAFormatTwice)},
    {"offers-other-formats-later", on(imGetIndPixelFormat, offersOtherFormatsLater)},
    {"has-a-format-below-the-first", on(imGetIndPixelFormat, [](const Call& call) {
         return call.index() == -1 ? call.passWith(nullptr, call.param2) : call.pass();
     })},

    // --- Channel layout ---
    {"swaps-left-and-right", after(imGetAudioChannelLayout, [](const Call& call, csSDK_int32 result) {
         if (result == imNoErr) {
             std::swap(labelsIn(call)[0], labelsIn(call)[1]);
         }
     })},
    {"clears-every-label", before(imGetAudioChannelLayout, [](const Call& call) {
         std::fill_n(labelsIn(call), kMaxAudioChannelCount, 0);
     })},
    {"has-a-layout-for-silence", saysOther(imGetAudioChannelLayout, kExceptionResult, imNoErr)},

    // --- Text ---
    {"writes-numbers-with-commas", after(imAnalysis, [](const Call& call, csSDK_int32 result) {
         if (result == imNoErr) {
             std::ranges::replace(textIn(call), '.', ',');
         }
     })},
    {"cuts-without-an-end", after(imAnalysis, [](const Call& call, csSDK_int32) {
         const std::span<char> text = textIn(call);
         if (!text.empty() && text.back() == '\0') {
             text.back() = '.';
         }
     })},
    {"writes-past-the-text", after(imAnalysis, [](const Call& call, csSDK_int32) {
         textIn(call).data()[textIn(call).size()] = '\0';
     })},
    {"clears-the-whole-buffer", before(imAnalysis, [](const Call& call) { std::ranges::fill(textIn(call), '\0'); })},

    // --- Data rates ---
    {"tells-half-of-the-rates", after(imDataRateAnalysis, [](const Call& call, csSDK_int32) {
         auto& record = call.record<imDataRateAnalysisRec>();
         record.buffersize /= record.buffer ? 1 : 2;
     })},
    {"tells-rates-to-whole-lists-only", on(imDataRateAnalysis, tellsRatesToWholeListsOnly)},
    {"has-no-key-frames", rates([](imDataSample& sample) { sample.sampledur &= ~kDataSampleKeyFrame; })},
    {"tells-bits-as-bytes", rates([](imDataSample& sample) { sample.samplesize *= 8; })},
    {"fills-dropped-frames", rates([](imDataSample& sample) {
         sample.samplesize = std::max(csSDK_uint32{sample.samplesize}, 1U);
     })},
    {"fills-more-than-the-buffer", on(imDataRateAnalysis, fillsMoreThanTheBuffer)},
};

}  // namespace

std::span<const Fault> listFaults() { return kListFaults; }

}  // namespace wrong
