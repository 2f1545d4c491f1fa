#include "importhost/bench/FrameRows.h"

#include "importhost/bench/RowBuilder.h"
#include "importhost/bench/Sampling.h"
#include "importhost/clips/AsyncPlan.h"

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/sessions/Names.h"

#include <utility>

namespace importhost::bench {

namespace {

std::string frameName(std::int64_t index) { return "Frame " + std::to_string(index); }

void askForFrame(VideoClip& clip, std::int64_t index, RowBuilder& row) {
    const Stopwatch watch;
    const hostkit::FrameAnswer answer = clip.frame(index);
    const double waited = watch.milliseconds();
    answer.frame ? row.delivered(waited) : row.failed(frameName(index), hostkit::resultText(answer.result));
    row.step();
}

Row framesAtOnce(const std::string& name, VideoClip& clip, const std::vector<std::int64_t>& indexes,
                 ReadCounter& counter, FileMeasurement& file) {
    RowBuilder row(name, indexes.size(), counter, file.failures);
    for (const std::int64_t index : indexes) {
        askForFrame(clip, index, row);
    }
    return row.finish();
}

// The host computes: sleeping would leave its processor to the plug-in.
void beBusy(int milliseconds) {
    const Stopwatch watch;
    while (watch.milliseconds() < milliseconds) {
    }
}

Row framesWithoutAhead(VideoClip& clip, const std::vector<std::int64_t>& indexes, ReadCounter& counter,
                       const BenchOptions& options, FileMeasurement& file) {
    RowBuilder row("none ahead", indexes.size(), counter, file.failures);
    for (const std::int64_t index : indexes) {
        askForFrame(clip, index, row);
        beBusy(options.busyMilliseconds);
    }
    return row.finish();
}

// `ahead` frames are announced at any time: the host waits for one, announces another, and works on the first.
Row framesAhead(hostkit::AsyncSession& async, VideoClip& clip, const std::vector<std::int64_t>& indexes,
                std::size_t ahead, ReadCounter& counter, const BenchOptions& options, FileMeasurement& file) {
    const std::vector<AsyncStep> plan = asyncPlan(indexes.size(), {.ahead = ahead});
    const std::vector<imFrameFormat> wanted = {clip.wanted()};
    RowBuilder row(std::to_string(ahead) + " ahead", indexes.size(), counter, file.failures);
    bool hasWork = false;
    for (const AsyncStep& step : plan) {
        const std::int64_t index = indexes[step.position];
        if (step.kind == AsyncStep::Kind::Announce) {
            if (const csSDK_int32 result = async.announce(clip.timeOf(index), wanted).result; result != aiNoError) {
                row.failed("Announcing frame " + std::to_string(index), hostkit::asyncResultText(result));
            }
            continue;
        }
        if (std::exchange(hasWork, true)) {
            beBusy(options.busyMilliseconds);
        }
        const Stopwatch watch;
        const hostkit::AsyncFrameAnswer answer = async.get(clip.timeOf(index), wanted);
        const double waited = watch.milliseconds();
        answer.frame ? row.delivered(waited) : row.failed(frameName(index), hostkit::asyncResultText(answer.result));
        row.step();
    }
    beBusy(options.busyMilliseconds);
    return row.finish();
}

}  // namespace

void measureFrames(VideoClip& clip, ReadCounter& counter, const BenchOptions& options, FileMeasurement& file) {
    const std::vector<std::int64_t> linear = spreadIndexes(file.frameCount, options.frames);
    const std::vector<std::int64_t> reverse(linear.rbegin(), linear.rend());
    const std::vector<std::int64_t> random = randomIndexes(file.frameCount, options.frames, options.seed);
    file.frames.push_back(framesAtOnce("linear", clip, linear, counter, file));
    file.frames.push_back(framesAtOnce("reverse", clip, reverse, counter, file));
    file.frames.push_back(framesAtOnce("random", clip, random, counter, file));
}

void measureAhead(Editor& editor, VideoClip& clip, ReadCounter& counter, const BenchOptions& options,
                  FileMeasurement& file) {
    const std::vector<std::int64_t> indexes = spreadIndexes(file.frameCount, options.frames);
    file.ahead.push_back(framesWithoutAhead(clip, indexes, counter, options, file));
    if (!editor.host().profile().asksForAsync) {
        file.noAhead = "the host '" + editor.host().profile().name + "' does not know asynchronous frames";
        return;
    }
    if (!clip.info().vidInfo.supportsAsyncIO) {
        file.noAhead = "the plug-in does not offer asynchronous frames for this clip";
        return;
    }
    hostkit::AsyncSession async(editor.session(), clip.session());
    if (const csSDK_int32 created = async.create().result; !async.isOpen()) {
        file.failures.push_back("The plug-in gave no asynchronous importer: " + hostkit::resultText(created) + ".");
        return;
    }
    // The codec starts for the first frame, which is not measured.
    async.announce(clip.timeOf(0), {clip.wanted()});
    async.get(clip.timeOf(0), {clip.wanted()});
    for (const std::size_t ahead : kAhead) {
        file.ahead.push_back(framesAhead(async, clip, indexes, ahead, counter, options, file));
    }
}

}  // namespace importhost::bench
