#include "wrong/Fault.h"

#include <algorithm>
#include <map>
#include <utility>

namespace wrong {

namespace {

// A stream as it was last described, and the requests since then.
struct Stream {
    int number = 0;
    int channels = 0;
    PrAudioSample duration = 0;
    PrAudioSample next = 0;             // where the latest request ended
    csSDK_uint32 latestSize = 0;
    bool wasQuieted = false;
    bool hadFrame = false;              // a frame was requested since the latest request
    int timesDescribed = 0;
};

std::map<void*, Stream> streams;        // by the clip's private data

void describe(const imFileInfoRec8& info) {
    void* const clip = info.privatedata;        // a copy: the member may be at an odd address
    Stream& stream = streams[clip];
    stream = {info.streamIdx, info.audInfo.numChannels, info.audDuration, 0, 0, false, false,
              stream.timesDescribed + 1};
}

void follow(const Call& call) {
    switch (call.selector) {
        case imGetInfo8: describe(call.record<imFileInfoRec8>()); break;
        case imGetSourceVideo: {
            void* const clip = call.record<imSourceVideoRec>().inPrivateData;
            streams[clip].hadFrame = true;
            break;
        }
        case imQuietFile: streams[call.param2].wasQuieted = true; break;
        case imCloseFile: streams.erase(call.param2); break;
        default: break;
    }
}

// A request for sound, which a fault may change before it passes it on.
struct SoundRequest {
    const Call& call;
    imImportAudioRec7& record;
    Stream& stream;

    csSDK_int32 pass() const { return call.pass(); }

    // Continues where the latest request ended, by its position.
    bool isAdjoining() const { return record.position > 0 && record.position == stream.next; }

    void silence() const {
        for (int channel = 0; channel < stream.channels; ++channel) {
            std::fill_n(record.buffer[channel], record.size, 0.0F);
        }
    }
};

// Passes all calls but requests for sound to the real plug-in.
Answer sound(std::function<csSDK_int32(const SoundRequest& request)> import) {
    return [=](const Call& call) {
        if (call.selector != imImportAudio7) {
            const csSDK_int32 result = call.pass();
            follow(call);
            return result;
        }
        auto& record = call.record<imImportAudioRec7>();
        void* const clip = record.privateData;
        Stream& stream = streams[clip];
        const PrAudioSample start = record.position < 0 ? stream.next : record.position;
        const csSDK_uint32 size = record.size;
        const csSDK_int32 result = import({call, record, stream});
        stream.next = start + size;
        stream.latestSize = size;
        stream.hadFrame = false;
        return result;
    };
}

// Imports the sound at the position that `moved` returns.
Answer soundAt(PrAudioSample (*moved)(PrAudioSample position, const SoundRequest& request)) {
    return sound([=](const SoundRequest& request) {
        request.record.position = moved(request.record.position, request);
        return request.pass();
    });
}

// Delivers silence from the streams to which `isSilent` applies.
Answer silences(bool (*isSilent)(const Stream& stream)) {
    return sound([=](const SoundRequest& request) {
        const csSDK_int32 result = request.pass();
        if (isSilent(request.stream)) {
            request.silence();
        }
        return result;
    });
}

csSDK_int32 leavesOutTheLastSample(const SoundRequest& request) {
    if (request.record.size == 0) {
        return request.pass();
    }
    float* const last = request.record.buffer[request.stream.channels - 1] + request.record.size - 1;
    const float before = *last;
    const csSDK_int32 result = request.pass();
    *last = before;
    return result;
}

csSDK_int32 swapsChannels(const SoundRequest& request) {
    if (request.stream.channels < 2) {
        return request.pass();
    }
    std::swap(request.record.buffer[0], request.record.buffer[1]);
    const csSDK_int32 result = request.pass();
    std::swap(request.record.buffer[0], request.record.buffer[1]);
    return result;
}

csSDK_int32 holdsTheLastSamplePastTheEnd(const SoundRequest& request) {
    const csSDK_int32 result = request.pass();
    const PrAudioSample left = request.stream.duration - request.record.position;
    if (left > 0 && left < PrAudioSample{request.record.size}) {
        for (int channel = 0; channel < request.stream.channels; ++channel) {
            float* const samples = request.record.buffer[channel];
            std::fill(samples + left, samples + request.record.size, samples[left - 1]);
        }
    }
    return result;
}

csSDK_int32 cutsBigRequests(const SoundRequest& request) {
    constexpr csSDK_uint32 kMost = 20000;
    const csSDK_uint32 size = request.record.size;
    if (size > kMost) {
        request.silence();
        request.record.size = kMost;
    }
    const csSDK_int32 result = request.pass();
    request.record.size = size;
    return result;
}

csSDK_int32 losesASampleAfterAFrame(const SoundRequest& request) {
    const PrAudioSample asked = request.record.position;
    request.record.position += request.stream.hadFrame && asked > 0 ? 1 : 0;
    const csSDK_int32 result = request.pass();
    if (request.stream.hadFrame && asked < 0 && request.record.size > 0) {
        request.record.buffer[0][0] = 0.75F;
    }
    return result;
}

// All clips continue from one position.
csSDK_int32 sharesThePosition(const SoundRequest& request) {
    static PrAudioSample shared = 0;
    request.record.position = request.record.position < 0 ? shared : request.record.position;
    shared = request.record.position + request.record.size;
    return request.stream.channels > 0 ? request.pass() : csSDK_int32{imNoErr};
}

const Fault kAudioFaults[] = {
    // --- What arrives ---
    {"leaves-out-the-last-sample", sound(leavesOutTheLastSample)},
    {"refuses-the-last-sample", sound([](const SoundRequest& request) {
         const bool isLast = request.record.position + request.record.size >= request.stream.duration;
         return isLast ? csSDK_int32{imFileReadFailed} : request.pass();
     })},
    {"is-one-sample-late", soundAt([](PrAudioSample position, const SoundRequest&) {
         return position < 0 ? position : position + 1;
     })},
    {"swaps-channels", sound(swapsChannels)},
    {"writes-past-the-buffer", sound([](const SoundRequest& request) {
         const csSDK_int32 result = request.pass();
         request.record.buffer[0][request.record.size] = 0.0F;
         return result;
     })},
    {"refuses-past-the-end", sound([](const SoundRequest& request) {
         const bool isPast = request.record.position >= request.stream.duration;
         return isPast ? csSDK_int32{imFileReadFailed} : request.pass();
     })},
    {"holds-the-last-sample-past-the-end", sound(holdsTheLastSamplePastTheEnd)},
    {"refuses-no-samples", sound([](const SoundRequest& request) {
         return request.record.size == 0 ? csSDK_int32{imOtherErr} : request.pass();
     })},
    {"forgets-where-no-samples-were", sound([](const SoundRequest& request) {
         return request.record.size == 0 ? csSDK_int32{imNoErr} : request.pass();
     })},
    {"cuts-big-requests", sound(cutsBigRequests)},

    // --- Parts and order ---
    // A request that continues the latest one repeats its last sample.
    {"repeats-a-sample-at-joins", soundAt([](PrAudioSample position, const SoundRequest& request) {
         return request.isAdjoining() && request.stream.latestSize > 0 ? position - 1 : position;
     })},
    // The same, but only after two requests of one sample.
    {"repeats-a-sample-after-short-requests", soundAt([](PrAudioSample position, const SoundRequest& request) {
         const bool areShort = request.stream.latestSize == 1 && request.record.size == 1;
         return request.isAdjoining() && areShort ? position - 1 : position;
     })},
    {"cannot-go-back-in-sound", soundAt([](PrAudioSample position, const SoundRequest& request) {
         return position < 0 ? position : std::max(position, request.stream.next);
     })},
    {"starts-anew-at-negative-positions", soundAt([](PrAudioSample position, const SoundRequest&) {
         return std::max(position, PrAudioSample{0});
     })},
    {"counts-negative-positions-back", soundAt([](PrAudioSample position, const SoundRequest& request) {
         return position < -1 ? position + request.stream.next : position;
     })},

    // --- Clips ---
    {"forgets-streams-once-left", silences([](const Stream& stream) {
         return stream.number == 0 && stream.timesDescribed > 6;
     })},
    {"silences-streams-that-are-none", silences([](const Stream& stream) { return stream.duration == 0; })},
    {"loses-a-sample-after-a-frame", sound(losesASampleAfterAFrame)},
    {"forgets-sound-when-quieted", silences([](const Stream& stream) { return stream.wasQuieted; })},
    {"forgets-the-position-when-quieted", soundAt([](PrAudioSample position, const SoundRequest& request) {
         return request.stream.wasQuieted ? std::max(position, PrAudioSample{0}) : position;
     })},
    {"shares-the-position", sound(sharesThePosition)},
};

}  // namespace

std::span<const Fault> audioFaults() { return kAudioFaults; }

}  // namespace wrong
