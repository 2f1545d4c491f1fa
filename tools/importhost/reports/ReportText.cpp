// The reports as aligned text.
#include "importhost/reports/ClipReport.h"

#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <utility>

namespace importhost {

namespace {

using hostkit::codeText;
using hostkit::codeTextHighFirst;

// Lines of a label and a value; further lines of a value are aligned with the first.
class Lines {
public:
    void heading(const std::string& text) { m_text.append(text).append("\n"); }
    void line(const std::string& label, const std::string& value) {
        constexpr std::size_t kLabelWidth = 16;
        std::string padded = "  " + label;
        padded.resize(std::max(padded.size() + 1, kLabelWidth + 2), ' ');
        m_text.append(padded).append(value).append("\n");
    }
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

std::string twoDecimals(double value) {
    char text[64] = {};
    std::snprintf(text, sizeof(text), "%.2f", value);
    return text;
}

void addVideo(Lines& lines, const imFileInfoRec8& info, const Editor& editor) {
    const imImageInfoRec& video = info.vidInfo;
    std::ostringstream size;
    size << video.imageWidth << " x " << video.imageHeight << ", " << rateText(info) << ", "
         << hostkit::frameCount(info) << " frames, " << timeText(secondsOf(info));
    lines.line("  video", size.str());
    std::ostringstream kind;
    kind << video.depth << " bits, " << hostkit::alphaTypeName(video.alphaType) << ", "
         << hostkit::fieldTypeName(video.fieldType) << ", pixel aspect " << video.pixelAspectNum << ":"
         << video.pixelAspectDen;
    lines.line("", kind.str());
    lines.line("  subtype", codeText(static_cast<csSDK_uint32>(video.subType)) + "  " +
                                subTypeName(editor, video.subType));
}

// A row of bars for each channel, between aligned edges.
void addLevels(Lines& lines, const StreamReport& stream) {
    std::size_t width = 0;
    for (std::size_t channel = 0; channel < stream.levels.peaks.size(); ++channel) {
        width = std::max(width, channelName(stream, channel).size());
    }
    std::string label = "  levels";
    for (std::size_t channel = 0; channel < stream.levels.peaks.size(); ++channel) {
        const std::vector<float>& peaks = stream.levels.peaks[channel];
        std::string name = channelName(stream, channel);
        name.resize(width, ' ');
        lines.line(std::exchange(label, ""), name + " |" + bars(peaks) + "| " + decibelText(peakOf(peaks)));
    }
    if (!stream.levels.peaks.empty() && stream.levels.result != imNoErr) {
        lines.line("", "then " + hostkit::resultText(stream.levels.result));
    }
}

void addSound(Lines& lines, const StreamReport& stream) {
    const imAudioInfoRec7& sound = stream.info.audInfo;
    std::ostringstream kind;
    kind << sound.numChannels << (sound.numChannels == 1 ? " channel, " : " channels, ") << sound.sampleRate
         << " Hz, " << hostkit::sampleTypeName(sound.sampleType) << ", " << stream.info.audDuration
         << " sample frames";
    lines.line("  sound", kind.str());
    std::string layout;
    for (const csSDK_int32 label : stream.labels) {
        layout.append(layout.empty() ? "" : " ").append(hostkit::channelLabelName(label));
    }
    lines.line("  layout", stream.layoutResult == imNoErr ? layout : hostkit::resultText(stream.layoutResult));
    addLevels(lines, stream);
}

void addDataRate(Lines& lines, const DataRateReport& rate) {
    if (rate.result != imNoErr) {
        lines.line("data rate", hostkit::resultText(rate.result));
        return;
    }
    std::ostringstream text;
    text << twoDecimals(rate.bitsPerSecond / 1e6) << " Mbit/s, " << rate.frames << " frames (" << rate.keyFrames
         << " key frames), " << twoDecimals(static_cast<double>(rate.bytes) / 1048576.0) << " MiB, smallest "
         << rate.smallest << ", largest " << rate.largest << " bytes";
    lines.line("data rate", text.str());
}

void addAnalysis(Lines& lines, const ClipReport& report) {
    if (report.analysisResult != imNoErr) {
        lines.line("analysis", hostkit::resultText(report.analysisResult));
        return;
    }
    std::istringstream text(report.analysis);
    std::string label = "analysis";
    for (std::string row; std::getline(text, row);) {
        if (!row.empty()) {
            lines.line(std::exchange(label, ""), row);
        }
    }
}

void addStream(Lines& lines, std::size_t index, const StreamReport& stream, const Editor& editor) {
    lines.line("stream " + std::to_string(index), hostkit::resultText(stream.result));
    if (!stream.isDescribed()) {
        return;
    }
    if (stream.info.hasVideo) {
        addVideo(lines, stream.info, editor);
    }
    if (stream.info.hasAudio) {
        addSound(lines, stream);
    }
}

}  // namespace

std::string channelName(const StreamReport& stream, std::size_t channel) {
    const bool isLabelled = channel < stream.labels.size() && stream.labels[channel] != kPrAudioChannelLabel_Discrete;
    return isLabelled ? std::string(hostkit::channelLabelName(stream.labels[channel]))
                      : "channel " + std::to_string(channel + 1);
}

std::string asText(const Editor& editor) {
    Lines lines;
    lines.heading(hostkit::toUtf8(editor.pluginPath()));
    for (const auto& format : editor.started().formats) {
        if (format.result != imNoErr) {
            continue;
        }
        lines.line("imports", hostkit::fieldText(format->FormatName, 256) + " (" +
                                  codeTextHighFirst(static_cast<csSDK_uint32>(format->filetype)) + "), ." +
                                  hostkit::fieldText(format->PlatformExtension, 256));
    }
    std::string label = "subtypes";
    for (const hostkit::SubTypesAnswer& answer : editor.started().subTypes) {
        for (const imSubTypeDescriptionRec& record : answer.records) {
            lines.line(std::exchange(label, ""), codeText(static_cast<csSDK_uint32>(record.subType)) + "  " +
                                                     hostkit::toUtf8(hostkit::fieldText(record.subTypeName, 256)));
        }
    }
    return lines.text();
}

std::string asText(const ClipReport& report, const Editor& editor) {
    Lines lines;
    lines.heading(hostkit::toUtf8(report.path));
    if (report.openResult != imNoErr) {
        lines.line("open", hostkit::resultText(report.openResult) + ": " + report.refusal);
        return lines.text();
    }
    for (std::size_t i = 0; i < report.streams.size(); ++i) {
        addStream(lines, i, report.streams[i], editor);
    }
    if (!report.isGood()) {
        lines.line("", report.refusal);
    }
    for (const std::string& sentence : report.advice) {
        lines.line("advice", sentence);
    }
    if (!report.isGood() || !report.streams.front().info.hasVideo) {
        return lines.text();
    }
    std::string label = "pixel formats";
    for (const PrPixelFormat format : report.pixelFormats) {
        lines.line(std::exchange(label, ""), codeText(format) + "  " + std::string(hostkit::pixelFormatName(format)));
    }
    addDataRate(lines, report.dataRate);
    addAnalysis(lines, report);
    return lines.text();
}

}  // namespace importhost
