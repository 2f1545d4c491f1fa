// Synchronous frames, one after the other: the part of a request's time that is neither reading the file nor the
// codec's decode.
//
// The decode of a large picture evicts everything else from the processor's caches, so that hundreds of nanoseconds of
// work take microseconds in any program. A loop that does only what is necessary therefore fetches the same frames in
// turn; the difference is the plug-in's cost.
#include "bench/frames/FloorFrames.h"
#include "bench/frames/FrameSamples.h"
#include "measured/MeasuredClip.h"

#include <benchmark/benchmark.h>

#include <utility>

namespace {

// Nanoseconds per frame.
struct Times {
    std::vector<double> read;
    std::vector<double> decode;
    std::vector<double> other;

    template <class GetFrame>
    void measure(hostkit::SpiedCall& reads, hostkit::SpiedCall& decodes, GetFrame getFrame) {
        reads.clear();
        decodes.clear();
        const std::uint64_t total = getFrame();
        read.push_back(static_cast<double>(reads.nanoseconds()));
        decode.push_back(static_cast<double>(decodes.nanoseconds()));
        other.push_back(static_cast<double>(total - reads.nanoseconds() - decodes.nanoseconds()));
    }
};

// The row's time covers both requests. Its counters are medians over the frames: reading, decoding and the rest of the
// plug-in's request, the rest of the loop's request, and the plug-in's time beyond the loop's.
void measure(benchmark::State& state, const std::filesystem::path& file) {
    MeasuredPlugin plugin(kBigFrameBytes);
    MeasuredClip clip(plugin, file);
    FloorFrames floor(plugin, file);
    clip.getFrame(0);   // begins the codec's session
    Times ours;
    Times least;
    csSDK_int64 frame = 0;
    for (auto _ : state) {
        ++frame;
        ours.measure(plugin.spy().reads(), plugin.spy().decodes(), [&] { return clip.getFrame(frame); });
        least.measure(floor.reads, floor.decodes, [&] { return floor.getFrame(static_cast<std::uint64_t>(frame)); });
    }
    const double other = medianOf(std::move(ours.other));
    const double floorOther = medianOf(std::move(least.other));
    const double decode = medianOf(std::move(ours.decode));
    state.counters["read"] = medianOf(std::move(ours.read));
    state.counters["decode"] = decode;
    state.counters["otherPercent"] = 100 * other / decode;
    state.counters["other"] = other;
    state.counters["floorOther"] = floorOther;
    state.counters["plugin"] = other - floorOther;
}

void bigFrames(benchmark::State& state) { measure(state, bigClip()); }
void smallFrames(benchmark::State& state) { measure(state, smallClip()); }

BENCHMARK(bigFrames)->Name("frames/sync/1080p")->Iterations(50)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(smallFrames)->Name("frames/sync/180p")->Iterations(400)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
