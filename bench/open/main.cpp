// Opening and indexing a file: the plug-in, two other readers, and the floor.
#include "open/Cases.h"
#include "open/Readers.h"

#include <benchmark/benchmark.h>

#include <exception>
#include <functional>
#include <string>

namespace {

using OpenFunction = std::function<bench::Opening(const std::string& path)>;

// Video runs at 25 frames per second in all cases.
double secondsOf(const bench::Case& of) {
    return static_cast<double>(of.chunks / of.streams) / 25;
}

void run(benchmark::State& state, const bench::Case& of, const OpenFunction& open) {
    try {
        const std::string path = of.file();
        open(path);  // warms the system's cache, whoever comes first
        for (auto _ : state) {
            const bench::Opening opening = open(path);
            state.SetIterationTime(opening.seconds);
            if (opening.entries != 0 && opening.entries != of.chunks) {
                throw std::runtime_error("only " + std::to_string(opening.entries) + " chunks were indexed");
            }
        }
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
        return;
    }
    const auto chunks = static_cast<double>(of.chunks);
    state.counters["chunks"] = chunks;
    state.counters["streams"] = of.streams;
    state.counters["secondsPerChunk"] =
        benchmark::Counter(chunks, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void add(const char* reader, const bench::Case& of, OpenFunction open) {
    benchmark::RegisterBenchmark(
        ("open/" + std::string(reader) + "/" + of.name()).c_str(),
        [of, open = std::move(open)](benchmark::State& state) { run(state, of, open); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.2);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const bench::Case& of : bench::allCases()) {
        add("plugin", of, bench::openWithPlugin);
        add("floor", of, bench::openAtFloor);
        add("libavformat", of, bench::openWithLibav);
        add("gstreamer", of, [seconds = secondsOf(of)](const std::string& path) {
            return bench::openWithGStreamer(path, seconds);
        });
    }
    benchmark::RunSpecifiedBenchmarks();
}
