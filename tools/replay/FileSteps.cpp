#include "replay/FileSteps.h"

#include "hostkit/host/GuardedBlock.h"
#include "hostkit/sessions/RecordStorage.h"
#include "hostkit/system/Text.h"
#include "replay/LineScan.h"

#include <algorithm>

namespace replay {

namespace {

constexpr csSDK_uint32 kUsualSampleFrames = 1024;
constexpr csSDK_int32 kUsualTextBytes = 65536;

std::string number(std::int64_t value) { return std::to_string(value); }

// The logged value, or the one assumed for it, which is noted.
template <class T>
T toldOr(const std::optional<T>& told, T usual, Step& step, const std::string& note) {
    if (!told) {
        step.assumed.push_back(note);
    }
    return told.value_or(usual);
}

bool isTooBig(csSDK_int32 bytes) { return bytes > kMostBufferBytes; }

}  // namespace

std::string formatsText(const std::vector<imFrameFormat>& formats) {
    std::string text;
    for (const imFrameFormat& format : formats) {
        text.append(text.empty() ? "" : ", ").append(number(hostkit::valueOf(format.inFrameWidth)));
        text.append(" x ").append(number(hostkit::valueOf(format.inFrameHeight)));
        text.append(" ").append(hostkit::codeText(hostkit::valueOf(format.inPixelFormat)));
    }
    return text.empty() ? "no formats" : text;
}

FileSteps::Handler FileSteps::handlerOf(csSDK_int32 selector) {
    switch (selector) {
    case imQuietFile: return &FileSteps::quietStep;
    case imCloseFile: return &FileSteps::closeStep;
    case imGetInfo8: return &FileSteps::infoStep;
    case imGetIndPixelFormat: return &FileSteps::pixelFormatStep;
    case imAnalysis: return &FileSteps::analysisStep;
    case imDataRateAnalysis: return &FileSteps::dataRateStep;
    case imGetSourceVideo: return &FileSteps::frameStep;
    case imGetAudioChannelLayout: return &FileSteps::layoutStep;
    case imImportAudio7: return &FileSteps::soundStep;
    default: return nullptr;
    }
}

std::optional<Step> FileSteps::step(const LoggedCall& call, const Arguments& arguments) {
    if (call.selector == imOpenFile8) {
        return openStep(call, arguments);
    }
    const Handler handler = handlerOf(call.selector);
    if (handler == nullptr) {
        return std::nullopt;
    }
    if (!arguments.path || !arguments.fileStream) {
        // Only a call without private data logs no path and still completes.
        return call.result && !arguments.path
                   ? (this->*handler)(call, arguments, m_nobody, {call.name + " without a file", {}, {}, {}})
                   : skippedStep(call.name, kNotTold);
    }
    const std::string text = call.name + " " + printable(fileNameOf(*arguments.path));
    const ClipBook::Found found = m_clips.find(*arguments.path, *arguments.fileStream, false);
    if (!found.clip) {
        return skippedStep(text, reasonWithoutClip(*arguments.path));
    }
    Step step{text, {}, {}, {}};
    if (found.candidates > 1) {
        step.assumed.push_back("the opening of the file that came last");
    }
    return (this->*handler)(call, arguments, found.clip, std::move(step));
}

std::string FileSteps::reasonWithoutClip(const std::string& loggedPath) const {
    const MappedFile* mapped = m_files.find(loggedPath);
    return mapped && mapped->file ? "the file is not open here"
                                  : "no file was given for '" + printable(loggedPath) + "'";
}

Step FileSteps::openStep(const LoggedCall& call, const Arguments& arguments) {
    if (!arguments.path || !arguments.fileStream) {
        return skippedStep(call.name, call.result ? "the log names no file" : kNotTold);
    }
    Step step{call.name + " " + printable(fileNameOf(*arguments.path)) + ", stream " + number(*arguments.fileStream),
              {}, {}, {}};
    const MappedFile* mapped = m_files.find(*arguments.path);
    if (!mapped || !mapped->file) {
        return skippedStep(step.text, reasonWithoutClip(*arguments.path));
    }
    ClipPtr clip;
    if (!arguments.makesImporter) {
        const ClipBook::Found found = m_clips.find(*arguments.path, *arguments.fileStream, true);
        clip = found.clip;
        if (found.candidates != 1) {
            step.assumed.push_back(clip ? "the opening of the file that came last" : "a new importer");
        }
    }
    const bool isNew = !clip;
    if (isNew) {
        clip = std::make_shared<ReplayClip>(m_importer, *mapped->file, *arguments.path, *arguments.fileStream);
    }
    step.run = [this, clip, isNew] {
        const csSDK_int32 result = clip->session.open().result;
        if (isNew && clip->session.privateData()) {
            m_clips.add(clip);
        }
        clip->isQuiet = clip->isQuiet && result != imNoErr;
        return result;
    };
    return step;
}

Step FileSteps::quietStep(const LoggedCall&, const Arguments&, const ClipPtr& clip, Step step) {
    step.run = [clip] {
        clip->isQuiet = true;
        return clip->session.quiet();
    };
    return step;
}

Step FileSteps::closeStep(const LoggedCall&, const Arguments&, const ClipPtr& clip, Step step) {
    if (clip == m_nobody) {
        step.run = [this] {
            imFileRef none = imInvalidHandleValue();
            return m_importer.call(imCloseFile, &none, nullptr);
        };
        return step;
    }
    step.run = [this, clip] {
        m_clips.remove(clip);
        return clip->session.close();
    };
    return step;
}

Step FileSteps::infoStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step) {
    if (!arguments.infoStream && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    const csSDK_int32 stream = toldOr(arguments.infoStream, 0, step, "stream 0");
    step.text.append(", stream ").append(number(stream));
    clip->offered = arguments.decodeFormats;
    step.run = [clip, stream] {
        const auto answer = clip->session.info(stream);
        const csSDK_int32 channels = answer->hasAudio ? answer->audInfo.numChannels : 1;
        clip->channels = std::clamp(channels, 1, kMaxAudioChannelCount);
        return answer.result;
    };
    return step;
}

// The log has no index, but the result: the format's position in the list of formats.
Step FileSteps::pixelFormatStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step) {
    if (!arguments.offeredFormat && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    const auto& offered = clip->offered;
    auto index = static_cast<csSDK_int32>(offered.size());
    const auto given = arguments.offeredFormat ? std::find(offered.begin(), offered.end(), *arguments.offeredFormat)
                                               : offered.end();
    if (given != offered.end()) {
        index = static_cast<csSDK_int32>(given - offered.begin());
    } else {
        step.assumed.push_back("the index after the last format");
    }
    step.text.append(", index ").append(number(index));
    step.run = [clip, index] { return clip->session.pixelFormat(index).result; };
    return step;
}

Step FileSteps::analysisStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step) {
    if (!arguments.bufferSize && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    const csSDK_int32 bytes = toldOr(arguments.bufferSize, kUsualTextBytes, step, "a buffer of 65536 bytes");
    step.text.append(", ").append(number(bytes)).append(" bytes");
    if (isTooBig(bytes)) {
        return skippedStep(step.text, "the buffer is too big to be played");
    }
    step.run = [clip, bytes] { return clip->session.analysis(bytes).result; };
    return step;
}

Step FileSteps::dataRateStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step) {
    if (!arguments.bufferSize && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    const csSDK_int32 bytes = toldOr(arguments.bufferSize, 0, step, "no buffer");
    step.text.append(", ").append(number(bytes)).append(" bytes");
    if (isTooBig(bytes)) {
        return skippedStep(step.text, "the buffer is too big to be played");
    }
    step.run = [this, clip, bytes] { return askDataRate(clip, bytes); };
    return step;
}

// A host asks for the size without a buffer, and for the samples with one of that size.
csSDK_int32 FileSteps::askDataRate(const ClipPtr& clip, csSDK_int32 bytes) {
    hostkit::GuardedBlock buffer(static_cast<std::size_t>(std::max(bytes, 0)), 0xCD);
    hostkit::HostRecord<imDataRateAnalysisRec> record;
    record->privatedata = clip->session.privateData();
    record->buffersize = bytes;
    record->buffer = bytes == 0 ? nullptr : reinterpret_cast<imDataSample*>(buffer.data());
    const csSDK_int32 result =
        m_importer.exchange(imDataRateAnalysis, std::move(record), clip->session.fileRef()).result;
    if (!buffer.guardsAreIntact()) {
        m_importer.host().report("The data rate samples were written past their buffer of " + number(bytes) +
                                 " bytes.");
    }
    return result;
}

Step FileSteps::frameStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step) {
    const bool hasPlace = arguments.hasPlaceForFrame.value_or(true);
    const bool isTold = arguments.time && (arguments.frameFormats || arguments.isOutOfBounds);
    if (!isTold && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    const PrTime time = toldOr(arguments.time, PrTime{0}, step, "time 0");
    const auto formats = toldOr(arguments.frameFormats, {}, step, "no frame formats");
    step.text.append(", time ").append(number(time)).append(", ").append(formatsText(formats));
    step.text.append(hasPlace ? "" : ", no place for a frame");
    step.run = [this, clip, time, formats, hasPlace] { return askFrame(clip, time, formats, hasPlace); };
    return step;
}

csSDK_int32 FileSteps::askFrame(const ClipPtr& clip, PrTime time, std::vector<imFrameFormat> formats, bool hasPlace) {
    if (hasPlace) {
        return clip->session.frame(time, formats).result;       // the frame is released at once
    }
    auto record = clip->session.frameRecord(time, formats, nullptr);
    return m_importer.exchange(imGetSourceVideo, std::move(record), clip->session.fileRef()).result;
}

Step FileSteps::layoutStep(const LoggedCall&, const Arguments&, const ClipPtr& clip, Step step) {
    step.run = [clip] { return clip->session.channelLayout().result; };
    return step;
}

Step FileSteps::soundStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step) {
    if ((!arguments.position || !arguments.sampleFrames) && !call.result) {
        return skippedStep(step.text, kNotTold);
    }
    const PrAudioSample position = toldOr(arguments.position, PrAudioSample{0}, step, "sample frame 0");
    const csSDK_uint32 frames =
        toldOr(arguments.sampleFrames, kUsualSampleFrames, step, "1024 sample frames");
    step.text.append(", ").append(number(frames)).append(" sample frames from ").append(number(position));
    if (std::uint64_t{frames} * static_cast<std::uint64_t>(clip->channels) > kMostSamples) {
        return skippedStep(step.text, "the request is too big to be played");
    }
    step.run = [clip, position, frames] { return clip->session.audio(position, frames, clip->channels).result; };
    return step;
}

}  // namespace replay
