// The memory that an open file keeps, and the peak while opening it. Counts operator new; nothing else is in use
// meanwhile.
#include "avi/AviParser.h"
#include "fileio/SystemFile.h"
#include "open/Cases.h"
#include "tests/avi/CountingHeap.h"

#include <benchmark/benchmark.h>

#include <exception>
#include <stdexcept>
#include <string>

namespace {

void measure(benchmark::State& state, const bench::Case& of) {
    const std::string path = of.file();
    double kept = 0;
    double peak = 0;
    for (auto _ : state) {
        fileio::SystemFile file;
        AviParser parser;
        const std::size_t before = heap::inUse();
        heap::startCounting();
        if (!file.open(path.c_str(), fileio::kOpenRead) || !parser.parse(file)) {
            throw std::runtime_error("cannot open " + path);
        }
        peak = static_cast<double>(heap::peak() - before);
        kept = static_cast<double>(heap::inUse() - before);
    }
    const auto chunks = static_cast<double>(of.chunks);
    state.counters["chunks"] = chunks;
    state.counters["keptPerEntry"] = kept / chunks;
    state.counters["peakOverKept"] = peak / kept;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const bench::Case& of : bench::allCases()) {
        benchmark::RegisterBenchmark(("open/memory/" + of.name()).c_str(), [of](benchmark::State& state) {
            try {
                measure(state, of);
            } catch (const std::exception& error) {
                state.SkipWithError(error.what());
            }
        })->Iterations(1);
    }
    benchmark::RunSpecifiedBenchmarks();
}
