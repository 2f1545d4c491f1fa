// The text of a clip's properties.
#include "importhost/validate/checks/protocol/ClipFacts.h"
#include "importhost/validate/checks/protocol/ProtocolParts.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace importhost::validate {

namespace {

using hostkit::resultText;
using Lines = std::vector<std::string>;

constexpr unsigned char kUntouched = 0xCD;

Lines linesOf(const std::string& text) {
    Lines lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string sampleTypeText(csSDK_int32 type) {
    switch (type) {
        case kPrAudioSampleType_8BitInt: return "8 bit";
        case kPrAudioSampleType_16BitInt: return "16 bit";
        case kPrAudioSampleType_24BitInt: return "24 bit";
        case kPrAudioSampleType_32BitInt: return "32 bit";
        case kPrAudioSampleType_32BitFloat: return "32 bit float";
        default: return "Unknown sample type";
    }
}

std::string subtypeName(PlayedPlugin& plugin, csSDK_int32 subtype) {
    for (const hostkit::SubTypesAnswer& list : plugin.started().subTypes) {
        for (const imSubTypeDescriptionRec& row : list.records) {
            if (row.subType == subtype) {
                return hostkit::toUtf8(hostkit::fieldText(row.subTypeName, std::size(row.subTypeName)));
            }
        }
    }
    return "";
}

void addVideoLines(PlayedPlugin& plugin, OpenClip& clip, Lines& lines) {
    const imFileInfoRec8& info = clip.info();
    const imImageInfoRec video = info.vidInfo;
    char rate[64];
    std::snprintf(rate, sizeof(rate), "%.3f", static_cast<double>(info.vidScale) / info.vidSampleSize);
    if (clip.clip().made) {
        lines.push_back("Codec: '" + clip.clip().made->handler + "', " + subtypeName(plugin, video.subType));
    }
    lines.push_back("Frame size: " + std::to_string(video.imageWidth) + " x " + std::to_string(video.imageHeight));
    lines.push_back("Frame count: " + std::to_string(clip.frameCount()));
    lines.push_back(std::string("Frame rate: ").append(rate));
}

void addSoundLines(const imFileInfoRec8& info, Lines& lines) {
    if (info.audInfo.sampleType == kPrAudioSampleType_Other) {
        lines.push_back("Invalid audio stream");
        return;
    }
    lines.push_back("Channels: " + std::to_string(info.audInfo.numChannels));
    lines.push_back("Rate: " + std::to_string(static_cast<csSDK_int64>(info.audInfo.sampleRate)) + " Hz");
    lines.push_back("Type: " + sampleTypeText(info.audInfo.sampleType));
}

// By what the plug-in tells of the streams elsewhere; leaves stream 0 selected.
Lines wantedLines(PlayedPlugin& plugin, OpenClip& clip) {
    Lines lines = {"", "Video stream:"};
    addVideoLines(plugin, clip, lines);
    if (clip.info().hasAudio != 0) {
        for (const auto& stream : clip.session().infos()) {
            addSoundLines(*stream.record, lines);
        }
    }
    clip.session().info(0);
    return lines;
}

void expectLinesInOrder(CheckRun& run, const Lines& found, const Lines& wanted) {
    auto place = found.begin();
    for (const std::string& line : wanted) {
        const auto next = std::find(place, found.end(), line);
        if (!run.expect(next != found.end(), "the text has no line '" + line + "' at its place")) {
            return;
        }
        place = next + 1;
    }
}

// As much of the text as there is room for, an end, and not a byte more.
bool expectCut(CheckRun& run, OpenClip& clip, const std::string& text, csSDK_int32 bytes) {
    const hostkit::AnalysisAnswer answer = clip.session().analysis(bytes);
    const std::string what = "a buffer of " + std::to_string(bytes) + " bytes";
    if (!run.expectResult("the answer to " + what, answer.result) || bytes <= 0) {
        return !run.hasFailed();
    }
    const std::size_t room = static_cast<std::size_t>(bytes) - 1;
    const std::size_t length = std::min(room, text.size());
    const bool isRight =
        run.expect(answer.text.size() < answer.buffer.size(), what + ": the text has no end") &&
        run.expect(answer.text == text.substr(0, length), what + ": the text is not the first " +
                                                              std::to_string(length) + " bytes of the whole one");
    const auto behind = answer.buffer.begin() + static_cast<std::ptrdiff_t>(length) + 1;
    const bool isLeft = std::all_of(behind, answer.buffer.end(),
                                    [](char c) { return static_cast<unsigned char>(c) == kUntouched; });
    return isRight && run.expect(isLeft, what + ": bytes behind the end of the text were written");
}

// All sizes around the first and the last byte, and of the others every one in `step`.
void expectCuts(CheckRun& run, OpenClip& clip, const std::string& text, csSDK_int32 step) {
    constexpr csSDK_int32 kEdge = 4;
    const auto last = static_cast<csSDK_int32>(text.size());
    for (csSDK_int32 bytes = 0; bytes <= last + kEdge; ++bytes) {
        const bool isEdge = bytes < kEdge || bytes > last - kEdge;
        if ((isEdge || bytes % step == 0) && !expectCut(run, clip, text, bytes)) {
            return;
        }
    }
}

}  // namespace

void analysisText(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, Need::Pictures, [&](OpenClip& clip) {
        const Lines wanted = wantedLines(plugin, clip);
        const hostkit::AnalysisAnswer answer = clip.session().analysis();
        run.expectResult("the answer", answer.result);
        const Lines found = linesOf(answer.text);
        expectLinesInOrder(run, found, wanted);
        if (clip.clip().made) {
            const auto isSound = [](const std::string& line) { return line.starts_with("Audio stream "); };
            const auto sounds = std::count_if(found.begin(), found.end(), isSound);
            run.expectEqual("sounds in the text", static_cast<std::size_t>(sounds), clip.clip().made->audio.size());
        }
    });
}

void analysisBuffers(CheckRun& run) {
    int clips = 0;
    forEachClip(run, Need::Pictures, [&](OpenClip& clip) {
        const std::string text = clip.session().analysis().text;
        // The way the text is cut does not depend on the clip: after the first ones less is enough.
        expectCuts(run, clip, text, clips++ < run.effort(1, 3) ? 1 : 37);
        expectCut(run, clip, text, -1);
        expectCut(run, clip, text, std::numeric_limits<csSDK_int32>::min());
    });
}

}  // namespace importhost::validate
