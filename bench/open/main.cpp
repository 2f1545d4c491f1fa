// Opening and indexing a file: the plug-in, two other readers, and the minimum.
#include "open/Cases.h"
#include "open/HeapMode.h"
#include "open/Readers.h"

#include <benchmark/benchmark.h>

#include <exception>
#include <functional>
#include <stdexcept>
#include <string>

namespace {

using OpenFunction = std::function<bench::Opening(const std::string& path)>;

// Video runs at 25 frames per second in all cases.
double secondsOf(const bench::Case& of) {
    return static_cast<double>(of.chunks / of.streams) / 25;
}

// A reader that reports its numbers of chunks must have found all of them.
void checkChunks(const bench::Case& of, const bench::Opening& opening) {
    if (opening.chunks && *opening.chunks != of.chunksOfStreams()) {
        std::string known;
        for (const std::uint64_t chunks : *opening.chunks) {
            known.append(" ").append(std::to_string(chunks));
        }
        throw std::runtime_error("wrong numbers of chunks were indexed, by stream:" + known);
    }
}

void run(benchmark::State& state, const bench::Case& of, bench::HeapMode mode, const OpenFunction& open) {
    try {
        const std::string path = of.file();
        bench::setUpHeap(mode);
        open(path);  // fills the system's cache, and the heap with memory to reuse
        for (auto _ : state) {
            bench::setUpHeap(mode);
            const bench::Opening opening = open(path);
            state.SetIterationTime(opening.seconds);
            checkChunks(of, opening);
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

void add(const std::string& name, const bench::Case& of, bench::HeapMode mode, OpenFunction open) {
    benchmark::RegisterBenchmark(
        (name + "/" + of.name()).c_str(),
        [of, mode, open = std::move(open)](benchmark::State& state) { run(state, of, mode, open); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.1);
}

OpenFunction pluginReader(const bench::Case& of) {
    return [openDml = of.openDml](const std::string& path) { return bench::openWithPlugin(path, openDml); };
}

}  // namespace

int main(int argc, char** argv) {
    using bench::HeapMode;
    benchmark::Initialize(&argc, argv);
    MeasuredPlugin plugin(1);
    const OpenFunction throughEntry = [&plugin](const std::string& path) {
        return bench::openThroughEntry(plugin, path);
    };
    for (const bench::Case& of : bench::allCases()) {
        add("open/plugin", of, HeapMode::fresh, pluginReader(of));
        add("open/floor", of, HeapMode::fresh, bench::openAtFloor);
        add("open/libavformat", of, HeapMode::fresh, bench::openWithLibav);
        add("open/gstreamer", of, HeapMode::fresh, [seconds = secondsOf(of)](const std::string& path) {
            return bench::openWithGStreamer(path, seconds);
        });
    }
    for (const bool openDml : {true, false}) {
        add("open/entry", {openDml, 2'000'000, 2}, HeapMode::fresh, throughEntry);
        add("open/entry", {openDml, 1'000'000, 32}, HeapMode::fresh, throughEntry);
        const bench::Case large{openDml, 2'000'000, 2};
        add("open/reused/plugin", large, HeapMode::reused, pluginReader(large));
        add("open/reused/floor", large, HeapMode::reused, bench::openAtFloor);
        add("open/reused/libavformat", large, HeapMode::reused, bench::openWithLibav);
    }
    benchmark::RunSpecifiedBenchmarks();
}
