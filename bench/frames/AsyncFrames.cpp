// Asynchronous frames: the total time of a run, compared with its slowest necessary part.
//
// The host announces `ahead` frames, then collects one after the other; after each it announces the next and is busy
// with the collected one for some milliseconds. The floor is the longest of the total times for reading, decoding and
// the host's own work, each measured alone: at best the three overlap, and the run takes as long as the slowest.
#include "bench/frames/FrameSamples.h"
#include "measured/MeasuredClip.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr csSDK_int64 kFrames = 60;

void stayBusy(std::uint64_t nanoseconds) {
    const std::uint64_t end = hostkit::nanosecondsNow() + nanoseconds;
    while (hostkit::nanosecondsNow() < end) {
    }
}

struct AloneTimes {
    double read = 0;
    double decode = 0;
};

// Fetches all frames one by one: the times of their reads and decodes when nothing overlaps.
AloneTimes runAlone(MeasuredPlugin& plugin, MeasuredClip& clip) {
    plugin.spy().clear();
    for (csSDK_int64 frame = 0; frame < kFrames; ++frame) {
        clip.getFrame(frame);
    }
    return {static_cast<double>(plugin.spy().reads().nanoseconds()),
            static_cast<double>(plugin.spy().decodes().nanoseconds())};
}

double runAhead(MeasuredClip& clip, csSDK_int64 ahead, std::uint64_t busy) {
    const std::uint64_t start = hostkit::nanosecondsNow();
    for (csSDK_int64 frame = 0; frame < ahead; ++frame) {
        clip.announce(frame);
    }
    for (csSDK_int64 frame = 0; frame < kFrames; ++frame) {
        clip.collect(frame);
        if (frame + ahead < kFrames) {
            clip.announce(frame + ahead);
        }
        stayBusy(busy);
    }
    return static_cast<double>(hostkit::nanosecondsNow() - start);
}

void framesAhead(benchmark::State& state) {
    const csSDK_int64 ahead = state.range(0);
    const auto busy = static_cast<std::uint64_t>(state.range(1)) * 1000000;
    MeasuredPlugin plugin(kBigFrameBytes);
    MeasuredClip clip(plugin, bigClip());
    clip.openAsync();
    clip.getFrame(0);           // begins the two codec sessions
    clip.collect(0);
    for (auto _ : state) {
        const AloneTimes alone = runAlone(plugin, clip);
        plugin.spy().clear();
        const double total = runAhead(clip, ahead, busy);
        const double host = static_cast<double>(busy) * kFrames;
        state.SetIterationTime(total / 1e9);
        state.counters["readAlone"] = alone.read;
        state.counters["decodeAlone"] = alone.decode;
        state.counters["hostAlone"] = host;
        state.counters["floor"] = std::max({alone.read, alone.decode, host});
        state.counters["decodeAhead"] = static_cast<double>(plugin.spy().decodes().nanoseconds());
        state.counters["perFrame"] = total / kFrames;
    }
}

BENCHMARK(framesAhead)->Name("frames/async")->ArgNames({"ahead", "busy"})
    ->ArgsProduct({{1, 2, 4, 8, 16}, {0}})
    ->ArgsProduct({{8}, {4, 8, 12}})
    ->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
