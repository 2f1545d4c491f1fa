// What the plug-in tells of a file, held against what the file is.
#include "importhost/validate/checks/protocol/ClipFacts.h"
#include "importhost/validate/checks/protocol/ProtocolParts.h"

#include "aviwriter/Types.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>

namespace importhost::validate {

namespace {

using aviwriter::SampleFormat;
using hostkit::valueOf;

csSDK_int32 typeOf(SampleFormat format) {
    switch (format) {
        case SampleFormat::pcm8: return kPrAudioSampleType_8BitInt;
        case SampleFormat::pcm16: return kPrAudioSampleType_16BitInt;
        case SampleFormat::pcm24: return kPrAudioSampleType_24BitInt;
        case SampleFormat::pcm32: return kPrAudioSampleType_32BitInt;
        default: return kPrAudioSampleType_32BitFloat;
    }
}

bool hasAlpha(const aviwriter::SampleOptions& made) {
    const std::string words = aviwriter::typeWords(made.type);
    return words.find("RGBA") != std::string::npos || words.find("YUVA") != std::string::npos;
}

void expectMadeVideo(CheckRun& run, const imFileInfoRec8& info, const aviwriter::SampleOptions& made) {
    const imImageInfoRec video = info.vidInfo;
    run.expectEqual("the width", valueOf(video.imageWidth), static_cast<csSDK_int32>(made.width));
    run.expectEqual("the height", valueOf(video.imageHeight), static_cast<csSDK_int32>(made.height));
    run.expectEqual("the subtype", hostkit::codeText(static_cast<csSDK_uint32>(video.subType)),
                    aviwriter::typeCode(made.type));
    run.expectEqual("the depth", valueOf(video.depth), hasAlpha(made) ? 32 : 24);
    run.expectEqual("the kind of alpha", static_cast<int>(video.alphaType),
                    static_cast<int>(hasAlpha(made) ? alphaStraight : alphaNone));
    run.expectEqual("the frame rate's numerator", valueOf(info.vidScale), static_cast<csSDK_int32>(made.rate));
    run.expectEqual("the frame rate's denominator", valueOf(info.vidSampleSize),
                    static_cast<csSDK_int32>(made.scale));
    run.expectEqual("the duration", valueOf(info.vidDuration),
                    static_cast<csSDK_int32>(made.frames * made.scale));
}

void expectMadeSound(CheckRun& run, const std::string& stream, const imFileInfoRec8& info,
                     const aviwriter::SampleOptions& made, const aviwriter::SampleAudio& audio) {
    const std::uint64_t frames = std::uint64_t{made.frames} * made.scale * audio.sampleRate / made.rate;
    run.expectEqual("the channels of " + stream, valueOf(info.audInfo.numChannels),
                    csSDK_int32{audio.channels});
    run.expectEqual("the sample rate of " + stream, valueOf(info.audInfo.sampleRate),
                    static_cast<float>(audio.sampleRate));
    run.expectEqual("the sample type of " + stream, valueOf(info.audInfo.sampleType), typeOf(audio.format));
    run.expectEqual("the sample frames of " + stream, valueOf(info.audDuration),
                    static_cast<PrAudioSample>(frames));
}

// Of any file: what the editor would divide by, or draw by, makes sense.
void expectSensibleVideo(CheckRun& run, PlayedPlugin& plugin, const imFileInfoRec8& info) {
    const imImageInfoRec video = info.vidInfo;
    run.expect(video.imageWidth > 0 && video.imageHeight > 0, "the frame size is " + std::to_string(video.imageWidth) +
                                                                  " x " + std::to_string(video.imageHeight));
    run.expect(info.vidScale > 0 && info.vidSampleSize > 0, "the frame rate is " + std::to_string(info.vidScale) + "/" +
                                                                std::to_string(info.vidSampleSize));
    run.expect(video.pixelAspectNum == 1 && video.pixelAspectDen == 1, "the pixels are not told as square");
    run.expectEqual("the kind of fields", static_cast<int>(video.fieldType), static_cast<int>(prFieldsNone));
    const csSDK_uint8 alphaOfDepth = video.depth == 32 ? alphaStraight : alphaNone;
    run.expect((video.depth == 32 || video.depth == 24) && video.alphaType == alphaOfDepth,
               "a depth of " + std::to_string(video.depth) + " does not go with alpha " +
                   std::to_string(video.alphaType));
    run.expect(video.supportsAsyncIO == 1 && video.supportsGetSourceVideo == 1,
               "it does not offer asynchronous frames and imGetSourceVideo");
    const auto& lists = plugin.started().subTypes;
    const bool isListed = !lists.empty() && std::any_of(lists.front().records.begin(), lists.front().records.end(),
                                                        [&](const auto& row) { return row.subType == video.subType; });
    run.expect(isListed, "the subtype " + hostkit::codeText(static_cast<csSDK_uint32>(video.subType)) +
                             " is not one of those that were listed");
}

void expectSensibleSound(CheckRun& run, const imFileInfoRec8& info) {
    const imAudioInfoRec7 sound = info.audInfo;
    run.expect(sound.numChannels >= 1 && sound.numChannels <= kMaxAudioChannelCount,
               "the sound has " + std::to_string(sound.numChannels) + " channels");
    run.expect(sound.sampleRate > 0, "the sound has no sample rate");
    run.expect(hostkit::sampleTypeName(sound.sampleType) != "unknown",
               "the sample type " + std::to_string(sound.sampleType) + " is none of the host's");
    run.expect(info.audDuration >= 0, "the sound lasts " + std::to_string(info.audDuration) + " sample frames");
}

void expectMade(CheckRun& run, OpenClip& clip, const aviwriter::SampleOptions& made) {
    run.expectEqual("sound", static_cast<int>(clip.info().hasAudio), made.audio.empty() ? 0 : 1);
    expectMadeVideo(run, clip.info(), made);
    for (std::size_t stream = 0; stream < made.audio.size(); ++stream) {
        const auto info = clip.session().info(static_cast<csSDK_int32>(stream));
        expectMadeSound(run, "stream " + std::to_string(stream), *info.record, made, made.audio[stream]);
    }
}

}  // namespace

void fileFacts(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, Need::Nothing, [&](OpenClip& clip) {
        const imFileInfoRec8& info = clip.info();
        run.expectEqual("pictures", static_cast<int>(info.hasVideo), 1);
        run.expectEqual("the access mode", valueOf(info.accessModes), csSDK_int32{kSeparateSequentialAudio});
        run.expectEqual("data rates offered", static_cast<int>(info.hasDataRate), 1);
        expectSensibleVideo(run, plugin, info);
        if (info.hasAudio != 0) {
            expectSensibleSound(run, info);
        }
        if (clip.clip().made) {
            expectMade(run, clip, *clip.clip().made);
        }
    });
}

}  // namespace importhost::validate
