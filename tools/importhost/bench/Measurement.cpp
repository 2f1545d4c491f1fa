#include "importhost/bench/Measurement.h"

#include "hostkit/system/ProcessSize.h"
#include "importhost/bench/FrameRows.h"
#include "importhost/bench/OpeningRows.h"
#include "importhost/bench/SoundRows.h"
#include "importhost/clips/VideoClip.h"
#include "importhost/reports/ClipReport.h"

#include "hostkit/system/Text.h"

namespace importhost::bench {

namespace {

constexpr int kHostBuffers = 9;

std::string videoText(VideoClip& clip) {
    const imFileInfoRec8& info = clip.info();
    std::string text = std::to_string(info.vidInfo.imageWidth);
    text.append(" x ").append(std::to_string(info.vidInfo.imageHeight)).append(", ").append(rateText(info));
    text.append(", ").append(std::to_string(clip.frameCount())).append(" frames, ");
    text.append(hostkit::codeText(static_cast<csSDK_uint32>(info.vidInfo.subType))).append(" as ");
    return text.append(hostkit::codeText(clip.formats().front()));
}

double hostBufferMilliseconds(Editor& editor, VideoClip& clip) {
    std::vector<double> times;
    prRect bounds;
    bounds.right = clip.info().vidInfo.imageWidth;
    bounds.bottom = clip.info().vidInfo.imageHeight;
    for (int i = 0; i < kHostBuffers; ++i) {
        const Stopwatch watch;
        PPixHand frame = nullptr;
        editor.host().frames().create(frame, PrPPixBufferAccess_ReadWrite, clip.formats().front(), bounds);
        hostkit::HostFrame(frame).dispose();
        times.push_back(watch.milliseconds());
    }
    return summaryOf(std::move(times)).median;
}

std::int64_t bytesNow() { return static_cast<std::int64_t>(hostkit::processSize().bytes); }

void measureAll(Editor& editor, const BenchOptions& options, FileMeasurement& file) {
    ReadCounter counter(editor.library());
    const std::int64_t before = bytesNow();
    measureOpening(editor, counter, file);
    VideoClip clip(editor, file.path);
    clip.frame(0);
    file.memory.openClip = bytesNow() - before;
    file.video = videoText(clip);
    file.frameCount = clip.frameCount();
    file.hostBuffer = hostBufferMilliseconds(editor, clip);
    measureFrames(clip, counter, options, file);
    measureAhead(editor, clip, counter, options, file);
    measureSound(editor, counter, file);
    file.memory.afterAll = bytesNow() - before;
    file.memory.programPeak = hostkit::processSize().peakBytes;
}

}  // namespace

FileMeasurement measureFile(Editor& editor, const std::filesystem::path& path, const BenchOptions& options) {
    FileMeasurement file;
    file.path = path;
    try {
        measureAll(editor, options, file);
    } catch (const ClipFailure& failure) {
        file.failures.push_back(failure.what());
    }
    return file;
}

}  // namespace importhost::bench
