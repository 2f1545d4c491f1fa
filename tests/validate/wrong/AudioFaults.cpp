#include "wrong/Fault.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

namespace wrong {

namespace {

// A stream as it was described last, and what was asked of it since.
struct Stream {
    int number = 0;
    int channels = 0;
    PrAudioSample duration = 0;
    PrAudioSample next = 0;             // where the latest request ended
    csSDK_uint32 latestSize = 0;
    bool wasQuieted = false;
    bool hadFrame = false;              // a frame was asked for since the latest request
    int timesDescribed = 0;
};

std::map<void*, Stream> streams;        // by the clip's private data

void describe(const imFileInfoRec8& info) {
    void* const clip = info.privatedata;        // a copy: the member may lie at an odd address
    Stream& stream = streams[clip];
    stream = {info.streamIdx, info.audInfo.numChannels, info.audDuration, 0, 0, false, false,
              stream.timesDescribed + 1};
}

void follow(csSDK_int32 selector, void* param2) {
    switch (selector) {
        case imGetInfo8: describe(*static_cast<const imFileInfoRec8*>(param2)); break;
        case imGetSourceVideo: {
            void* const clip = static_cast<imSourceVideoRec*>(param2)->inPrivateData;
            streams[clip].hadFrame = true;
            break;
        }
        case imQuietFile: streams[param2].wasQuieted = true; break;
        case imCloseFile: streams.erase(param2); break;
        default: break;
    }
}

// The right plug-in's answer.
using Pass = std::function<csSDK_int32()>;

// Passes everything on; requests of sound are answered by `import`.
template <csSDK_int32 (*import)(imImportAudioRec7& record, Stream& stream, const Pass& pass)>
csSDK_int32 withSound(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const auto pass = [&] { return right(selector, stdParms, param1, param2); };
    if (selector != imImportAudio7) {
        const csSDK_int32 result = pass();
        follow(selector, param2);
        return result;
    }
    auto& record = *static_cast<imImportAudioRec7*>(param2);
    void* const clip = record.privateData;
    Stream& stream = streams[clip];
    const PrAudioSample start = record.position < 0 ? stream.next : record.position;
    const csSDK_uint32 size = record.size;
    const csSDK_int32 result = import(record, stream, pass);
    stream.next = start + size;
    stream.latestSize = size;
    stream.hadFrame = false;
    return result;
}

void silenceAll(const imImportAudioRec7& record, const Stream& stream) {
    for (int channel = 0; channel < stream.channels; ++channel) {
        std::fill_n(record.buffer[channel], record.size, 0.0F);
    }
}

// --- What arrives -----------------------------------------------------------------------------------------------

csSDK_int32 leavesOutTheLastSample(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    if (record.size == 0) {
        return pass();
    }
    float* const last = record.buffer[stream.channels - 1] + record.size - 1;
    const float before = *last;
    const csSDK_int32 result = pass();
    *last = before;
    return result;
}

csSDK_int32 refusesTheLastSample(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    const bool isLast = record.position + record.size >= stream.duration;
    return isLast ? csSDK_int32{imFileReadFailed} : pass();
}

csSDK_int32 isOneSampleLate(imImportAudioRec7& record, Stream&, const Pass& pass) {
    record.position += record.position >= 0 ? 1 : 0;
    return pass();
}

csSDK_int32 swapsChannels(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    if (stream.channels < 2) {
        return pass();
    }
    std::swap(record.buffer[0], record.buffer[1]);
    const csSDK_int32 result = pass();
    std::swap(record.buffer[0], record.buffer[1]);
    return result;
}

csSDK_int32 writesPastTheBuffer(imImportAudioRec7& record, Stream&, const Pass& pass) {
    const csSDK_int32 result = pass();
    record.buffer[0][record.size] = 0.0F;
    return result;
}

csSDK_int32 refusesBehindTheEnd(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    return record.position >= stream.duration ? csSDK_int32{imFileReadFailed} : pass();
}

csSDK_int32 holdsTheLastSampleBehindTheEnd(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    const csSDK_int32 result = pass();
    const PrAudioSample left = stream.duration - record.position;
    if (left > 0 && left < PrAudioSample{record.size}) {
        for (int channel = 0; channel < stream.channels; ++channel) {
            float* const samples = record.buffer[channel];
            std::fill(samples + left, samples + record.size, samples[left - 1]);
        }
    }
    return result;
}

csSDK_int32 refusesNoSamples(imImportAudioRec7& record, Stream&, const Pass& pass) {
    return record.size == 0 ? csSDK_int32{imOtherErr} : pass();
}

csSDK_int32 forgetsWhereNoSamplesWere(imImportAudioRec7& record, Stream&, const Pass& pass) {
    if (record.size == 0) {
        return imNoErr;
    }
    return pass();
}

csSDK_int32 cutsBigRequests(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    constexpr csSDK_uint32 kMost = 20000;
    const csSDK_uint32 size = record.size;
    if (size > kMost) {
        silenceAll(record, stream);
        record.size = kMost;
    }
    const csSDK_int32 result = pass();
    record.size = size;
    return result;
}

// --- Parts and order --------------------------------------------------------------------------------------------

// Whoever goes on where the latest request ended hears its last sample again.
csSDK_int32 repeatsASampleAtJoins(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    record.position -= record.position > 0 && record.position == stream.next && stream.latestSize > 0 ? 1 : 0;
    return pass();
}

// The same, but only behind two requests of one sample.
csSDK_int32 repeatsASampleAfterShortRequests(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    record.position -= record.position > 0 && record.position == stream.next && stream.latestSize == 1 &&
                               record.size == 1 ? 1 : 0;
    return pass();
}

csSDK_int32 cannotGoBackInSound(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    record.position = record.position >= 0 && record.position < stream.next ? stream.next : record.position;
    return pass();
}

csSDK_int32 startsAnewAtNegativePositions(imImportAudioRec7& record, Stream&, const Pass& pass) {
    record.position = record.position < 0 ? 0 : record.position;
    return pass();
}

csSDK_int32 countsNegativePositionsBack(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    record.position += record.position < -1 ? stream.next : 0;
    return pass();
}

// --- Clips ------------------------------------------------------------------------------------------------------

csSDK_int32 forgetsStreamsOnceLeft(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    const csSDK_int32 result = pass();
    if (stream.number == 0 && stream.timesDescribed > 6) {
        silenceAll(record, stream);
    }
    return result;
}

csSDK_int32 silencesStreamsThatAreNone(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    const csSDK_int32 result = pass();
    if (stream.duration == 0) {
        silenceAll(record, stream);
    }
    return result;
}

csSDK_int32 losesASampleAfterAFrame(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    record.position += stream.hadFrame && record.position > 0 ? 1 : 0;
    const bool startsLate = stream.hadFrame && record.position < 0 && record.size > 0;
    const csSDK_int32 result = pass();
    if (startsLate) {
        record.buffer[0][0] = 0.75F;
    }
    return result;
}

csSDK_int32 forgetsSoundWhenQuieted(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    const csSDK_int32 result = pass();
    if (stream.wasQuieted) {
        silenceAll(record, stream);
    }
    return result;
}

csSDK_int32 forgetsThePositionWhenQuieted(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    record.position = stream.wasQuieted && record.position < 0 ? 0 : record.position;
    return pass();
}

// All clips go on from one position.
csSDK_int32 sharesThePosition(imImportAudioRec7& record, Stream& stream, const Pass& pass) {
    static PrAudioSample shared = 0;
    record.position = record.position < 0 ? shared : record.position;
    shared = record.position + record.size;
    return stream.channels > 0 ? pass() : csSDK_int32{imNoErr};
}

constexpr Fault kAudioFaults[] = {
    {"leaves-out-the-last-sample", withSound<leavesOutTheLastSample>},
    {"refuses-the-last-sample", withSound<refusesTheLastSample>},
    {"is-one-sample-late", withSound<isOneSampleLate>},
    {"swaps-channels", withSound<swapsChannels>},
    {"writes-past-the-buffer", withSound<writesPastTheBuffer>},
    {"refuses-behind-the-end", withSound<refusesBehindTheEnd>},
    {"holds-the-last-sample-behind-the-end", withSound<holdsTheLastSampleBehindTheEnd>},
    {"refuses-no-samples", withSound<refusesNoSamples>},
    {"forgets-where-no-samples-were", withSound<forgetsWhereNoSamplesWere>},
    {"cuts-big-requests", withSound<cutsBigRequests>},
    {"repeats-a-sample-at-joins", withSound<repeatsASampleAtJoins>},
    {"repeats-a-sample-after-short-requests", withSound<repeatsASampleAfterShortRequests>},
    {"cannot-go-back-in-sound", withSound<cannotGoBackInSound>},
    {"starts-anew-at-negative-positions", withSound<startsAnewAtNegativePositions>},
    {"counts-negative-positions-back", withSound<countsNegativePositionsBack>},
    {"forgets-streams-once-left", withSound<forgetsStreamsOnceLeft>},
    {"silences-streams-that-are-none", withSound<silencesStreamsThatAreNone>},
    {"loses-a-sample-after-a-frame", withSound<losesASampleAfterAFrame>},
    {"forgets-sound-when-quieted", withSound<forgetsSoundWhenQuieted>},
    {"forgets-the-position-when-quieted", withSound<forgetsThePositionWhenQuieted>},
    {"shares-the-position", withSound<sharesThePosition>},
};

}  // namespace

std::span<const Fault> audioFaults() { return kAudioFaults; }

}  // namespace wrong
