#include "importhost/reports/ClipReport.h"

#include "commandline/OpenFailure.h"
#include "hostkit/system/Text.h"
#include "importhost/console/Refusal.h"
#include "importhost/reports/RepairAdvice.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace importhost {

namespace {

using hostkit::ClipSession;

StreamReport describeStream(ClipSession& clip, csSDK_int32 index) {
    StreamReport report;
    const auto answer = clip.info(index);
    report.result = answer.result;
    report.info = *answer.record;
    if (report.isDescribed() && report.info.hasAudio) {
        const hostkit::LayoutAnswer layout = clip.channelLayout();
        report.layoutResult = layout.result;
        if (layout.result == imNoErr) {
            const csSDK_int32 claimed = report.info.audInfo.numChannels;
            const csSDK_int32 channels = std::clamp(claimed, 0, kMaxAudioChannelCount);
            report.labels.assign(layout.labels.begin(), layout.labels.begin() + channels);
        }
        report.levels = levelsOf(clip, report.info);
    }
    return report;
}

DataRateReport summarise(const hostkit::DataRateAnswer& answer, const imFileInfoRec8& info) {
    DataRateReport report;
    report.result = answer.dataCall ? answer.dataCall->result : answer.sizeCall.result;
    report.frames = answer.samples.size();
    for (const imDataSample& sample : answer.samples) {
        report.bytes += sample.samplesize;
        report.keyFrames += (sample.sampledur & kDataSampleKeyFrame) != 0;
        report.smallest = report.smallest == 0 ? sample.samplesize : std::min(report.smallest, sample.samplesize);
        report.largest = std::max(report.largest, sample.samplesize);
    }
    const double seconds = secondsOf(info);
    report.bitsPerSecond = seconds > 0.0 ? static_cast<double>(report.bytes) * 8.0 / seconds : 0.0;
    return report;
}

}  // namespace

ClipReport reportOf(hostkit::ImporterSession& session, const std::filesystem::path& path) {
    ClipReport report;
    report.path = path;
    ClipSession clip(session, path);
    report.openResult = clip.open().result;
    if (report.openResult != imNoErr) {
        report.refusal = openFailure(path);
        return report;
    }
    report.advice = repairAdvice(path);
    do {
        report.streams.push_back(describeStream(clip, static_cast<csSDK_int32>(report.streams.size())));
    } while (report.streams.back().result == imIterateStreams && report.streams.size() < 256);
    if (report.streams.size() > 1) {
        clip.info(0);       // the plug-in keeps the last stream asked for; the rest is about the first one
    }
    if (!report.isGood()) {
        report.refusal = describeRefusal(path);
        return report;
    }
    if (!report.streams.front().info.hasVideo) {
        return report;
    }
    report.pixelFormats = clip.pixelFormats();
    const hostkit::AnalysisAnswer analysis = clip.analysis();
    report.analysisResult = analysis.result;
    report.analysis = analysis.text;
    if (report.streams.front().info.hasDataRate) {
        report.dataRate = summarise(clip.dataRate(), report.streams.front().info);
    }
    return report;
}

double secondsOf(const imFileInfoRec8& info) {
    if (info.hasVideo && info.vidScale > 0) {
        return static_cast<double>(info.vidDuration) / info.vidScale;
    }
    const double rate = static_cast<double>(info.audInfo.sampleRate);
    return info.hasAudio && rate > 0.0 ? static_cast<double>(info.audDuration) / rate : 0.0;
}

std::string subTypeName(const Editor& editor, csSDK_int32 subType) {
    for (const hostkit::SubTypesAnswer& answer : editor.started().subTypes) {
        for (const imSubTypeDescriptionRec& record : answer.records) {
            if (record.subType == subType) {
                return hostkit::toUtf8(hostkit::fieldText(record.subTypeName, 256));
            }
        }
    }
    return {};
}

std::string timeText(double seconds) {
    const auto milliseconds = static_cast<long long>(std::llround(seconds * 1000.0));
    char text[40] = {};
    std::snprintf(text, sizeof(text), "%lld:%02d:%02d.%03d", milliseconds / 3600000,
                  static_cast<int>(milliseconds / 60000 % 60), static_cast<int>(milliseconds / 1000 % 60),
                  static_cast<int>(milliseconds % 1000));
    return text;
}

std::string rateText(const imFileInfoRec8& info) { return rateText(info.vidScale, info.vidSampleSize); }

std::string rateText(std::int64_t scale, std::int64_t sampleSize) {
    const double rate = sampleSize > 0 ? static_cast<double>(scale) / static_cast<double>(sampleSize) : 0.0;
    char text[64] = {};
    std::snprintf(text, sizeof(text), "%.3f fps (%lld/%lld)", rate, static_cast<long long>(scale),
                  static_cast<long long>(sampleSize));
    return text;
}

}  // namespace importhost
