// Pixel formats, channel layouts and data rates of a clip.
#include "importhost/validate/checks/protocol/ClipFacts.h"
#include "importhost/validate/checks/protocol/ProtocolParts.h"

#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <bit>
#include <filesystem>
#include <limits>
#include <set>

namespace importhost::validate {

namespace {

using hostkit::resultText;

// --- Pixel formats ----------------------------------------------------------------------------------------------

std::string formatsText(const std::vector<PrPixelFormat>& formats) {
    std::string text;
    for (const PrPixelFormat format : formats) {
        text.append(text.empty() ? "" : " ").append(hostkit::codeText(static_cast<csSDK_uint32>(format)));
    }
    return text;
}

void expectUsableFormats(CheckRun& run, OpenClip& clip, const std::vector<PrPixelFormat>& formats) {
    std::set<PrPixelFormat> seen;
    for (const PrPixelFormat format : formats) {
        const std::string what = "pixel format " + formatsText({format});
        run.expect(seen.insert(format).second, what + " is offered twice");
        const auto* row = hostkit::findPixelFormat(static_cast<csSDK_uint32>(format));
        const bool hasFrames = row && hostkit::frameBytes(*row, clip.info().vidInfo.imageWidth,
                                                          clip.info().vidInfo.imageHeight,
                                                          hostkit::RowBytesPolicy::Tight);
        run.expect(hasFrames, what + " is none that the host can make frames of");
    }
}

void expectEndOfFormats(CheckRun& run, hostkit::ClipSession& clip, csSDK_int32 count) {
    for (const csSDK_int32 index : {count, count + 1, 1000, std::numeric_limits<csSDK_int32>::max(), -1,
                                    std::numeric_limits<csSDK_int32>::min()}) {
        const auto answer = clip.pixelFormat(index);
        const std::string what = "pixel format " + std::to_string(index);
        run.expectResult("the answer to " + what, answer.result, imBadFormatIndex);
        run.expect(answer.written.empty(), "the record for " + what + " was written");
    }
}

// --- Channel layout ---------------------------------------------------------------------------------------------

using Labels = std::vector<csSDK_int32>;

// By the bits of a channel mask; those beyond are discrete, 0. The host's numbers follow another order than the bits.
constexpr csSDK_int32 kLabelsOfBits[] = {100, 101, 102, 103, 104, 105, 107, 108, 106,
                                         109, 110, 111, 112, 114, 113, 115, 117, 116};

Labels wantedLabels(const aviwriter::SampleAudio& audio, csSDK_int32 filled) {
    const bool tellsMask = audio.record == aviwriter::WaveRecord::extensible40;
    const std::uint32_t usual = audio.channels == 2 || audio.channels == 6 ? ~0U : 0U;
    const std::uint32_t mask = tellsMask ? audio.channelMask : usual;
    Labels labels(kMaxAudioChannelCount, filled);
    std::size_t slot = 0;
    for (std::size_t bit = 0; bit < 32 && slot < audio.channels; ++bit) {
        if ((mask >> bit & 1) != 0) {
            labels[slot++] = bit < std::size(kLabelsOfBits) ? kLabelsOfBits[bit] : 0;
        }
    }
    return labels;
}

std::string labelsText(const Labels& labels) {
    std::string text;
    for (const csSDK_int32 label : labels) {
        text.append(text.empty() ? "" : " ").append(std::to_string(label));
    }
    return text;
}

void expectLabels(CheckRun& run, OpenClip& clip, csSDK_int32 stream, csSDK_int32 filled) {
    const auto info = clip.session().info(stream);
    const std::string what = "stream " + std::to_string(stream) + ", slots filled with " + std::to_string(filled);
    const hostkit::LayoutAnswer layout = clip.session().channelLayout(filled);
    const bool isSound = info->audInfo.sampleType != kPrAudioSampleType_Other;
    run.expectResult(what + ", the answer", layout.result, isSound ? imNoErr : imUnsupported);
    if (clip.clip().made) {
        run.expectEqual(what, labelsText(layout.labels),
                        labelsText(wantedLabels(clip.clip().made->audio[static_cast<std::size_t>(stream)], filled)));
        return;
    }
    for (std::size_t slot = 0; slot < layout.labels.size(); ++slot) {
        const csSDK_int32 label = layout.labels[slot];
        const bool isOwn = static_cast<csSDK_int32>(slot) < info->audInfo.numChannels;
        run.expect(label == filled || (isOwn && hostkit::channelLabelName(label) != "unknown"),
                   what + ": slot " + std::to_string(slot) + " has label " + std::to_string(label));
    }
}

// --- Data rates -------------------------------------------------------------------------------------------------

constexpr std::uint8_t kFill = 0xCD;
constexpr std::uint8_t kOtherFill = 0x32;

// A buffer for `count` samples after the call, filled before it.
std::vector<std::uint8_t> filledWithRates(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip, std::size_t count,
                                          std::uint8_t fill) {
    hostkit::GuardedBlock buffer(count * sizeof(imDataSample), fill);
    hostkit::HostRecord<imDataRateAnalysisRec> record;
    record->privatedata = clip.session().privateData();
    record->buffersize = static_cast<csSDK_int32>(buffer.size());
    record->buffer = reinterpret_cast<imDataSample*>(buffer.data());
    const auto answer = plugin.session().exchange(imDataRateAnalysis, std::move(record), clip.session().fileRef());
    run.expectResult("the answer to a buffer for " + std::to_string(count) + " samples", answer.result);
    run.expect(buffer.guardsAreIntact(), "a buffer for " + std::to_string(count) + " samples was overrun");
    return {buffer.data(), buffer.data() + buffer.size()};
}

// Samples up to the last one that was written. A size may hold any byte, also one that the buffer was filled with: so
// there are two buffers, and what is as it was in both was left alone.
std::size_t samplesWritten(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip, std::size_t count) {
    const auto once = filledWithRates(run, plugin, clip, count, kFill);
    const auto again = filledWithRates(run, plugin, clip, count, kOtherFill);
    std::size_t end = once.size();
    while (end > 0 && once[end - 1] == kFill && again[end - 1] == kOtherFill) {
        --end;
    }
    return (end + sizeof(imDataSample) - 1) / sizeof(imDataSample);
}

void expectSamples(CheckRun& run, OpenClip& clip, const std::vector<imDataSample>& samples) {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::string frame = "frame " + std::to_string(i);
        const csSDK_uint32 duration = samples[i].sampledur;
        const csSDK_uint32 size = samples[i].samplesize;
        run.expect((duration & kDataSampleKeyFrame) != 0, frame + " is not told as a key frame");
        run.expectEqual("the duration of " + frame, static_cast<csSDK_int32>(duration & ~kDataSampleKeyFrame),
                        hostkit::valueOf(clip.info().vidSampleSize));
        if (clip.clip().made) {
            run.expectEqual(frame + " is empty", size == 0,
                            clip.clip().made->dropped.contains(static_cast<std::uint32_t>(i)));
        }
        sum += size;
    }
    const std::uintmax_t fileBytes = std::filesystem::file_size(clip.clip().path);
    run.expect(sum <= fileBytes, "the frames have " + std::to_string(sum) + " bytes, and the file has " +
                                     std::to_string(fileBytes));
}

}  // namespace

void pixelFormatsEnd(CheckRun& run) {
    const int tries = run.effort(4, 30);
    forEachClip(run, Need::Pictures, [&](OpenClip& clip) {
        const std::vector<PrPixelFormat> formats = clip.formats();
        expectUsableFormats(run, clip, formats);
        expectEndOfFormats(run, clip.session(), static_cast<csSDK_int32>(formats.size()));
        run.expectEqual("the list asked for again", formatsText(clip.session().pixelFormats()), formatsText(formats));
        for (int i = 0; i < tries; ++i) {
            const std::uint64_t index = run.below(formats.size());
            const auto answer = clip.session().pixelFormat(static_cast<csSDK_int32>(index));
            run.expectEqual("pixel format " + std::to_string(index) + " asked for directly",
                            formatsText({static_cast<PrPixelFormat>(hostkit::valueOf(answer->outPixelFormat))}),
                            formatsText({formats[index]}));
        }
    });
}

void channelLayout(CheckRun& run) {
    forEachClip(run, Need::Nothing, [&](OpenClip& clip) {
        if (clip.info().hasAudio == 0) {
            run.expectResult("the answer for a clip without sound", clip.session().channelLayout().result,
                             kExceptionResult);
            return;
        }
        const auto streams = static_cast<csSDK_int32>(clip.session().infos().size());
        for (csSDK_int32 stream = 0; stream < streams; ++stream) {
            expectLabels(run, clip, stream, -1);
            expectLabels(run, clip, stream, 7777);
        }
    });
}

void dataRate(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, Need::Pictures, [&](OpenClip& clip) {
        const auto frames = static_cast<std::size_t>(clip.frameCount());
        const hostkit::DataRateAnswer rates = clip.session().dataRate();
        run.expectResult("the answer to the question for the size", rates.sizeCall.result);
        if (!run.expectEqual("the buffer that is asked for, in samples", rates.samples.size(), frames)) {
            return;
        }
        run.expectResult("the answer to the question for the samples", rates.dataCall->result);
        run.expectEqual("the rate beside the samples", hostkit::valueOf((*rates.dataCall)->baserate), 0);
        expectSamples(run, clip, rates.samples);
        for (const std::size_t room : {std::size_t{0}, frames - 1, frames + 2}) {
            run.expectEqual("samples written to a buffer for " + std::to_string(room),
                            samplesWritten(run, plugin, clip, room), std::min(room, frames));
        }
    });
}

}  // namespace importhost::validate
