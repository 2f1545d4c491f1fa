// How much of a request's time is waiting for memory: frames without their decode. Between two requests a loop reads
// some amount of other memory, one cache line after another, and evicts what a decode would evict. The requests do the
// same work in all rows.
#include "bench/frames/FrameSamples.h"
#include "measured/MeasuredClip.h"

#include <benchmark/benchmark.h>

namespace {

constexpr std::size_t kLine = 64;

void readThrough(const std::vector<char>& memory) {
    int sum = 0;
    for (std::size_t at = 0; at < memory.size(); at += kLine) {
        sum += memory[at];
    }
    benchmark::DoNotOptimize(sum);
}

void sweptFrames(benchmark::State& state) {
    const std::vector<char> memory(static_cast<std::size_t>(state.range(0)) * 1024, 1);
    MeasuredPlugin plugin(kBigFrameBytes);
    plugin.spy().decodes().leaveOut(true);
    MeasuredClip clip(plugin, bigClip());
    clip.getFrame(0);
    std::vector<double> other;
    csSDK_int64 frame = 0;
    for (auto _ : state) {
        readThrough(memory);
        plugin.spy().clear();
        const std::uint64_t total = clip.getFrame(++frame);
        other.push_back(static_cast<double>(total - plugin.spy().reads().nanoseconds()));
    }
    state.counters["sweptKiB"] = static_cast<double>(state.range(0));
    state.counters["other"] = medianOf(std::move(other));
}

BENCHMARK(sweptFrames)->Name("frames/swept")->ArgName("KiB")
    ->Arg(0)->Arg(256)->Arg(1024)->Arg(2048)->Arg(4096)->Arg(8192)->Arg(16384)->Arg(65536)
    ->Iterations(200)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
