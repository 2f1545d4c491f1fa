// One frame after the other, as the host asks for them: what of a request's time is neither the reading of the file nor
// the codec's decode.
#include "bench/frames/FrameSamples.h"
#include "bench/plugin/MeasuredClip.h"

#include <benchmark/benchmark.h>

namespace {

// The row's time is the whole request; its counters are medians over the frames, in nanoseconds.
void measure(benchmark::State& state, const std::filesystem::path& file) {
    MeasuredPlugin plugin(kBigFrameBytes);
    MeasuredClip clip(plugin, file);
    clip.getFrame(0);   // begins the codec's session
    std::vector<double> read;
    std::vector<double> decode;
    std::vector<double> other;
    csSDK_int64 frame = 0;
    for (auto _ : state) {
        plugin.spy().clear();
        const std::uint64_t start = hostkit::nanosecondsNow();
        clip.getFrame(++frame);
        const std::uint64_t total = hostkit::nanosecondsNow() - start;
        const std::uint64_t reading = plugin.spy().reads().nanoseconds();
        const std::uint64_t decoding = plugin.spy().decodes().nanoseconds();
        read.push_back(static_cast<double>(reading));
        decode.push_back(static_cast<double>(decoding));
        other.push_back(static_cast<double>(total - reading - decoding));
    }
    state.counters["read"] = medianOf(std::move(read));
    state.counters["decode"] = medianOf(std::move(decode));
    state.counters["other"] = medianOf(std::move(other));
}

void bigFrames(benchmark::State& state) { measure(state, bigClip()); }
void smallFrames(benchmark::State& state) { measure(state, smallClip()); }

BENCHMARK(bigFrames)->Name("frames/sync/1080p")->Iterations(50)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(smallFrames)->Name("frames/sync/180p")->Iterations(200)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
