#include "importhost/validate/checks/protocol/ClipFacts.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <zlib.h>

#include <algorithm>

namespace importhost::validate {

namespace {

constexpr csSDK_uint32 kSoundFrames = 1000;

std::string pair(csSDK_int64 first, const char* between, csSDK_int64 second) {
    return std::to_string(first).append(between).append(std::to_string(second));
}

void addVideo(const imFileInfoRec8& info, Facts& facts) {
    const imImageInfoRec video = info.vidInfo;
    facts.push_back("frame size: " + pair(video.imageWidth, " x ", video.imageHeight));
    facts.push_back("depth and alpha: " + pair(video.depth, ", ", video.alphaType));
    facts.push_back("subtype: " + hostkit::codeText(static_cast<csSDK_uint32>(video.subType)));
    facts.push_back("fields: " + std::to_string(video.fieldType));
    facts.push_back("pixel aspect: " + pair(video.pixelAspectNum, ":", video.pixelAspectDen));
    facts.push_back("asynchronous, source video: " + pair(video.supportsAsyncIO, ", ", video.supportsGetSourceVideo));
    facts.push_back("pulldown: " + std::to_string(video.hasPulldown));
    facts.push_back("frame rate: " + pair(info.vidScale, "/", info.vidSampleSize));
    facts.push_back("duration: " + std::to_string(info.vidDuration));
}

void addSound(const imFileInfoRec8& info, Facts& facts) {
    facts.push_back("channels: " + std::to_string(info.audInfo.numChannels));
    facts.push_back("sample rate: " + std::to_string(static_cast<csSDK_int64>(info.audInfo.sampleRate)));
    facts.push_back("sample type: " + std::to_string(info.audInfo.sampleType));
    facts.push_back("sample frames: " + std::to_string(info.audDuration));
}

void addPictures(OpenClip& clip, Facts& facts) {
    const std::vector<PrPixelFormat> formats = clip.session().pixelFormats();
    std::string text = "pixel formats:";
    for (const PrPixelFormat format : formats) {
        text.append(" ").append(hostkit::codeText(static_cast<csSDK_uint32>(format)));
    }
    facts.push_back(text);
    if (formats.empty()) {
        return;
    }
    for (const std::int64_t index : {std::int64_t{0}, std::max<std::int64_t>(clip.frameCount() - 1, 0)}) {
        const hostkit::FrameAnswer frame = clip.frame(index, formats.front());
        const std::vector<std::uint8_t> pixels = pixelsOf(frame.frame);
        facts.push_back("frame " + std::to_string(index) + ": " + hostkit::resultText(frame.result) + ", sum " +
                        sumOf(pixels.data(), pixels.size()));
    }
}

void addTexts(hostkit::ClipSession& session, Facts& facts) {
    const hostkit::AnalysisAnswer analysis = session.analysis();
    facts.push_back("analysis: " + hostkit::resultText(analysis.result) + ", '" + analysis.text + "'");
    const hostkit::DataRateAnswer rates = session.dataRate();
    facts.push_back("data rates: " + hostkit::resultText(rates.sizeCall.result) + ", " +
                    std::to_string(rates.samples.size()) + ", sum " +
                    sumOf(rates.samples.data(), rates.samples.size() * sizeof(imDataSample)));
}

void addSamples(OpenClip& clip, Facts& facts) {
    const hostkit::LayoutAnswer layout = clip.session().channelLayout(-1);
    std::string text = "channel layout: " + hostkit::resultText(layout.result);
    for (const csSDK_int32 label : layout.labels) {
        text.append(" ").append(std::to_string(label));
    }
    facts.push_back(text);
    const csSDK_int32 channels = std::clamp<csSDK_int32>(clip.info().audInfo.numChannels, 0, kMaxAudioChannelCount);
    const hostkit::AudioAnswer sound = clip.session().audio(0, kSoundFrames, channels);
    facts.push_back("sound: " + hostkit::resultText(sound.result));
    for (const std::vector<float>& samples : sound.channels) {
        facts.back().append(" ").append(sumOf(samples.data(), samples.size() * sizeof(float)));
    }
}

}  // namespace

Facts streamFacts(const hostkit::Answer<imFileInfoRec8>& answer) {
    Facts facts = {"result: " + hostkit::resultText(answer.result)};
    facts.push_back("pictures and sound: " + pair(answer->hasVideo, ", ", answer->hasAudio));
    facts.push_back("access and data rates: " + pair(answer->accessModes, ", ", answer->hasDataRate));
    if (answer->hasVideo != 0) {
        addVideo(*answer.record, facts);
    }
    if (answer->hasAudio != 0) {
        addSound(*answer.record, facts);
    }
    return facts;
}

Facts clipFacts(OpenClip& clip) {
    const hostkit::Answer<imFileInfoRec8> info = clip.session().info(0);
    Facts facts = streamFacts(info);
    if (info->hasVideo != 0) {
        addPictures(clip, facts);
        addTexts(clip.session(), facts);
    }
    if (info->hasAudio != 0) {
        addSamples(clip, facts);
    }
    return facts;
}

bool expectSame(CheckRun& run, const std::string& when, const Facts& found, const Facts& wanted) {
    const auto [one, other] = std::mismatch(found.begin(), found.end(), wanted.begin(), wanted.end());
    if (one == found.end() && other == wanted.end()) {
        return true;
    }
    const auto textAt = [](Facts::const_iterator line, const Facts& facts) {
        return line == facts.end() ? std::string("nothing more") : "'" + *line + "'";
    };
    run.fail(when + ": found " + textAt(one, found) + ", wanted " + textAt(other, wanted));
    return false;
}

std::string sumOf(const void* bytes, std::size_t size) {
    return std::to_string(crc32_z(crc32_z(0, nullptr, 0), static_cast<const Bytef*>(bytes), size));
}

Clip ownClip(const CheckRun& run, const std::filesystem::path& name) {
    return writeOwn(run, name, sampleRows().front().options);
}

}  // namespace importhost::validate
