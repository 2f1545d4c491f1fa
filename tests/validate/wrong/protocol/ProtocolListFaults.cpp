#include "wrong/protocol/ProtocolFaults.h"

#include <algorithm>
#include <cstdint>

namespace wrong {

namespace {

csSDK_int32 indexIn(const void* param1) { return static_cast<csSDK_int32>(reinterpret_cast<std::uintptr_t>(param1)); }

// --- Pixel formats ----------------------------------------------------------------------------------------------

csSDK_int32 offersAFormatTwice(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    const bool isEnd = selector == imGetIndPixelFormat && result == imBadFormatIndex;
    return isEnd && indexIn(param1) < 20 && indexIn(param1) > 0 ? right(selector, stdParms, nullptr, param2) : result;
}

csSDK_int32 offersOtherFormatsLater(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static int lists = 0;
    if (selector == imGetIndPixelFormat && param1 == nullptr && lists++ % 2 == 1) {
        param1 = reinterpret_cast<void*>(std::uintptr_t{1});
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 hasAFormatBelowTheFirst(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const bool isBelow = selector == imGetIndPixelFormat && indexIn(param1) == -1;
    return right(selector, stdParms, isBelow ? nullptr : param1, param2);
}

// --- Channel layout ---------------------------------------------------------------------------------------------

csSDK_int32* labelsIn(void* param2) {
    return reinterpret_cast<csSDK_int32*>(static_cast<char*>(param2) +
                                          offsetof(imGetAudioChannelLayoutRec, outChannelLabels));
}

csSDK_int32 swapsLeftAndRight(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imGetAudioChannelLayout && result == imNoErr) {
        std::swap(labelsIn(param2)[0], labelsIn(param2)[1]);
    }
    return result;
}

csSDK_int32 clearsEveryLabel(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imGetAudioChannelLayout) {
        std::fill_n(labelsIn(param2), kMaxAudioChannelCount, 0);
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 hasALayoutForSilence(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return selector == imGetAudioChannelLayout && result == kExceptionResult ? csSDK_int32{imNoErr} : result;
}

// --- Text -------------------------------------------------------------------------------------------------------

csSDK_int32 writesNumbersWithCommas(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imAnalysis && result == imNoErr) {
        const auto& record = *static_cast<const imAnalysisRec*>(param2);
        std::replace(record.buffer, record.buffer + record.buffersize, '.', ',');
    }
    return result;
}

csSDK_int32 cutsWithoutAnEnd(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imAnalysis) {
        const auto& record = *static_cast<const imAnalysisRec*>(param2);
        if (record.buffersize > 0 && record.buffer[record.buffersize - 1] == '\0') {
            record.buffer[record.buffersize - 1] = '.';
        }
    }
    return result;
}

csSDK_int32 writesBehindTheBuffer(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imAnalysis) {
        const auto& record = *static_cast<const imAnalysisRec*>(param2);
        record.buffer[std::max(csSDK_int32{record.buffersize}, 0)] = '\0';
    }
    return result;
}

csSDK_int32 clearsTheWholeBuffer(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imAnalysis) {
        const auto& record = *static_cast<const imAnalysisRec*>(param2);
        std::fill_n(record.buffer, std::max(csSDK_int32{record.buffersize}, 0), '\0');
    }
    return right(selector, stdParms, param1, param2);
}

// --- Data rates -------------------------------------------------------------------------------------------------

// The right answer, with each sample changed that was told.
template <class Change>
csSDK_int32 ratesWith(Change change, csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imDataRateAnalysis && result == imNoErr) {
        auto& record = *static_cast<imDataRateAnalysisRec*>(param2);
        const auto bytes = static_cast<std::size_t>(record.buffersize);
        const std::size_t samples = record.buffer ? bytes / sizeof(imDataSample) : 0;
        std::for_each(record.buffer, record.buffer + samples, change);
    }
    return result;
}

csSDK_int32 tellsHalfOfTheRates(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imDataRateAnalysis) {
        auto& record = *static_cast<imDataRateAnalysisRec*>(param2);
        record.buffersize /= record.buffer ? 1 : 2;
    }
    return result;
}

csSDK_int32 hasNoKeyFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return ratesWith([](imDataSample& sample) { sample.sampledur &= ~kDataSampleKeyFrame; }, selector, stdParms, param1,
                     param2);
}

csSDK_int32 tellsBitsAsBytes(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return ratesWith([](imDataSample& sample) { sample.samplesize *= 8; }, selector, stdParms, param1, param2);
}

csSDK_int32 fillsDroppedFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return ratesWith([](imDataSample& sample) { sample.samplesize = std::max(csSDK_uint32{sample.samplesize}, 1U); },
                     selector, stdParms, param1, param2);
}

// A buffer that is too small stays as it was.
csSDK_int32 tellsRatesToWholeListsOnly(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static csSDK_int32 wholeList = 0;
    if (selector != imDataRateAnalysis) {
        return right(selector, stdParms, param1, param2);
    }
    auto& record = *static_cast<imDataRateAnalysisRec*>(param2);
    if (record.buffer && record.buffersize < wholeList) {
        return imNoErr;
    }
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    wholeList = record.buffer ? wholeList : csSDK_int32{record.buffersize};
    return result;
}

// Room for one sample more than there is.
csSDK_int32 fillsMoreThanTheBuffer(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector != imDataRateAnalysis) {
        return right(selector, stdParms, param1, param2);
    }
    auto& record = *static_cast<imDataRateAnalysisRec*>(param2);
    const csSDK_int32 more = record.buffer ? static_cast<csSDK_int32>(sizeof(imDataSample)) : 0;
    record.buffersize += more;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    record.buffersize -= more;
    return result;
}

constexpr Fault kListFaults[] = {
    {"offers-a-format-twice", offersAFormatTwice},
    {"offers-other-formats-later", offersOtherFormatsLater},
    {"has-a-format-below-the-first", hasAFormatBelowTheFirst},
    {"swaps-left-and-right", swapsLeftAndRight},
    {"clears-every-label", clearsEveryLabel},
    {"has-a-layout-for-silence", hasALayoutForSilence},
    {"writes-numbers-with-commas", writesNumbersWithCommas},
    {"cuts-without-an-end", cutsWithoutAnEnd},
    {"writes-behind-the-buffer", writesBehindTheBuffer},
    {"clears-the-whole-buffer", clearsTheWholeBuffer},
    {"tells-half-of-the-rates", tellsHalfOfTheRates},
    {"tells-rates-to-whole-lists-only", tellsRatesToWholeListsOnly},
    {"has-no-key-frames", hasNoKeyFrames},
    {"tells-bits-as-bytes", tellsBitsAsBytes},
    {"fills-dropped-frames", fillsDroppedFrames},
    {"fills-more-than-the-buffer", fillsMoreThanTheBuffer},
};

}  // namespace

std::span<const Fault> listFaults() { return kListFaults; }

}  // namespace wrong
