// Pictures, sound and facts about them. Every buffer is written up to its last byte: it must be as large as the
// host says, and the host's guards show it if not.
#include "probe/Clips.h"
#include "probe/Complaints.h"
#include "probe/InventedClip.h"
#include "probe/Names.h"
#include "probe/RecordPromises.h"
#include "probe/Selectors.h"

#include <algorithm>

namespace hostprobe {

namespace {

constexpr csSDK_int32 kSampleListBytes = kFrameCount * static_cast<csSDK_int32>(sizeof(imDataSample));

csSDK_int32 giveSamples(const Clip& clip, void* buffer, csSDK_int32 size) {
    const csSDK_int32 asked = clip.samplesAskedFor;
    if (!expect(asked != 0, Sentence::SamplesNotAskedFor) ||
        !expect(size >= asked, Sentence::SamplesDoNotFit, {std::to_string(size), std::to_string(asked)})) {
        return imOtherErr;
    }
    std::memset(buffer, 0, static_cast<std::size_t>(size));
    for (csSDK_int32 i = 0; i < kFrameCount; ++i) {
        const imDataSample sample = {1 | kDataSampleKeyFrame, static_cast<csSDK_uint32>(1000 + i)};
        putAt(buffer, static_cast<std::size_t>(i) * sizeof(sample), sample);
    }
    return imNoErr;
}

// Returns the channels' buffers, or none if one is missing.
std::vector<float*> buffersOf(const void* record, csSDK_int32 channels) {
    std::vector<float*> buffers;
    const void* list = pointerAt(record, kAudioBuffers);
    for (csSDK_int32 channel = 0; channel < channels; ++channel) {
        void* buffer = list ? pointerAt(list, static_cast<std::size_t>(channel) * 8) : nullptr;
        if (!expect(buffer, Sentence::ParameterMissing,
                    {"imImportAudio7", "the buffer of channel " + std::to_string(channel + 1)})) {
            return {};
        }
        buffers.push_back(static_cast<float*>(buffer));
    }
    return buffers;
}

void giveSound(const std::vector<float*>& buffers, PrAudioSample position, csSDK_uint32 size) {
    for (std::size_t channel = 0; channel < buffers.size(); ++channel) {
        for (csSDK_uint32 i = 0; i < size; ++i) {
            putAt(buffers[channel], i * sizeof(float), soundAt(position + i, static_cast<csSDK_int32>(channel)));
        }
    }
}

// A buffer that overlaps another was written over by it.
bool isKept(const std::vector<float*>& buffers, PrAudioSample position, csSDK_uint32 size) {
    for (std::size_t channel = 0; channel < buffers.size(); ++channel) {
        for (csSDK_uint32 i = 0; i < size; ++i) {
            if (fieldAt<float>(buffers[channel], i * sizeof(float)) !=
                soundAt(position + i, static_cast<csSDK_int32>(channel))) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

csSDK_int32 onAnalysis(imFileRef reference, void* record) {
    return answerFor({imAnalysis, pointerAt(record, kAnalysisPrivateData), reference}, [=](Clip&) {
        expectZeros("imAnalysis", RecordKind::Analysis, record, hostVersion());
        const csSDK_int32 size = int32At(record, kAnalysisSize);
        char* buffer = static_cast<char*>(pointerAt(record, kAnalysisBuffer));
        if (expect(size >= 0, Sentence::BadValue, {"imAnalysis", "buffersize"}) && size > 0 &&
            expect(buffer, Sentence::ParameterMissing, {"imAnalysis", "the buffer"})) {
            constexpr char text[] = "\nA clip of the host probe's invention\n";
            const auto bytes = static_cast<std::size_t>(size);
            std::memset(buffer, 0, bytes);
            std::memcpy(buffer, text, std::min(sizeof(text), bytes) - 1);
        }
        return imNoErr;
    });
}

csSDK_int32 onDataRateAnalysis(imFileRef reference, void* record) {
    return answerFor({imDataRateAnalysis, pointerAt(record, kDataRatePrivateData), reference}, [=](Clip& clip) {
        void* buffer = pointerAt(record, kDataRateBuffer);
        expectZeros("imDataRateAnalysis", buffer ? RecordKind::DataRateSamples : RecordKind::DataRateSize, record,
                    hostVersion());
        if (buffer) {
            return giveSamples(clip, buffer, int32At(record, kDataRateSize));
        }
        clip.samplesAskedFor = kSampleListBytes;
        putAt(record, kDataRateSize, kSampleListBytes);
        return csSDK_int32{imNoErr};
    });
}

csSDK_int32 onGetAudioChannelLayout(imFileRef reference, void* record) {
    return answerFor({imGetAudioChannelLayout, pointerAt(record, kLayoutPrivateData), reference}, [=](Clip& clip) {
        const StreamFacts& stream = kStreams[clip.stream];
        std::memcpy(static_cast<char*>(record) + kLayoutLabels, stream.labels,
                    static_cast<std::size_t>(stream.channels) * sizeof(csSDK_int32));
        return imNoErr;
    });
}

csSDK_int32 onImportAudio(imFileRef reference, void* record) {
    return answerFor({imImportAudio7, pointerAt(record, kAudioPrivateData), reference}, [=](Clip& clip) {
        expectZeros("imImportAudio7", RecordKind::Audio, record, hostVersion());
        const std::vector<float*> buffers = buffersOf(record, kStreams[clip.stream].channels);
        if (buffers.empty()) {
            return imOtherErr;
        }
        const auto size = fieldAt<csSDK_uint32>(record, kAudioSize);
        const auto asked = fieldAt<PrAudioSample>(record, kAudioPosition);
        const PrAudioSample position = asked < 0 ? clip.nextSound : asked;
        giveSound(buffers, position, size);
        expect(isKept(buffers, position, size), Sentence::BuffersOverlap);
        clip.nextSound = position + size;
        return imNoErr;
    });
}

csSDK_int32 onGetSourceVideo(imFileRef reference, void* record) {
    return answerFor({imGetSourceVideo, pointerAt(record, kVideoPrivateData), reference}, [=](Clip& clip) {
        expectZeros("imGetSourceVideo", RecordKind::SourceVideo, record, hostVersion());
        switch (clip.frames->deliver("imGetSourceVideo", record)) {
            case FrameResult::Delivered: return imNoErr;
            case FrameResult::NoSuchFrame: return imFrameNotFound;
            case FrameResult::Failed: break;
        }
        return imOtherErr;
    });
}

}  // namespace hostprobe
