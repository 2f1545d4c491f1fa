// The cost of the log: a call while it is off compared with an empty call, and the cost per line of a frame request
// while it is on.
#include "bench/log/EmptyCall.h"
#include "log/Log.h"
#include "measured/MeasuredClip.h"
#include "measured/SampleFiles.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// Calls per measurement: the loop's own cost becomes negligible.
constexpr int kCalls = 1000;

// The mean time of one call, in nanoseconds.
void reportPerCall(benchmark::State& state) {
    state.counters["perCall"] = benchmark::Counter(
        kCalls * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void emptyCalls(benchmark::State& state) {
    for (auto _ : state) {
        for (int i = 0; i < kCalls; ++i) {
            emptyCall("line %d", i);
        }
    }
    reportPerCall(state);
}

void logCallsOff(benchmark::State& state) {
    for (auto _ : state) {
        for (int i = 0; i < kCalls; ++i) {
            Log("line %d", i);
        }
    }
    reportPerCall(state);
}

// Gives the log a home folder of its own and turns it on, for the lifetime of the object.
class LogHome {
public:
    LogHome() : m_folder(sampleFolder() / "log-home") {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        if (const char* home = std::getenv("HOME")) {
            m_homeBefore = home;
        }
        setenv("HOME", m_folder.c_str(), 1);
        setenv("QUORVANE_ENABLE_ADOBE_LOG", "1", 1);
    }
    ~LogHome() {
        setenv("HOME", m_homeBefore.c_str(), 1);
        unsetenv("QUORVANE_ENABLE_ADOBE_LOG");
        std::filesystem::remove_all(m_folder);
    }
    LogHome(const LogHome&) = delete;
    LogHome& operator=(const LogHome&) = delete;

    // Number of lines in all logs.
    std::size_t lines() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(m_folder)) {
            if (entry.is_regular_file()) {
                std::ifstream file(entry.path());
                count += static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(file), {}, '\n'));
            }
        }
        return count;
    }

private:
    std::filesystem::path m_folder;
    std::string m_homeBefore;
};

// The row's time is one request. `perLine` is the part that is neither reading nor decoding, divided by the lines.
void loggedFrames(benchmark::State& state) {
    const LogHome home;
    MeasuredPlugin plugin(320 * 180 * 2);
    MeasuredClip clip(plugin, sampleFile("frames-180p.avi", {.width = 320, .height = 180, .frames = 25}));
    clip.getFrame(0);
    const std::size_t before = home.lines();
    clip.getFrame(0);
    const std::size_t lines = home.lines() - before;
    if (lines == 0) {
        throw std::runtime_error("nothing is logged");
    }
    std::vector<double> perLine;
    csSDK_int64 frame = 0;
    for (auto _ : state) {
        plugin.spy().clear();
        const std::uint64_t start = hostkit::nanosecondsNow();
        clip.getFrame(++frame);
        const std::uint64_t total = hostkit::nanosecondsNow() - start;
        const std::uint64_t other = total - plugin.spy().reads().nanoseconds() - plugin.spy().decodes().nanoseconds();
        perLine.push_back(static_cast<double>(other) / static_cast<double>(lines));
    }
    const auto middle = perLine.begin() + static_cast<std::ptrdiff_t>(perLine.size() / 2);
    std::nth_element(perLine.begin(), middle, perLine.end());
    state.counters["lines"] = static_cast<double>(lines);
    state.counters["perLine"] = *middle;
}

BENCHMARK(emptyCalls)->Name("log/empty");
BENCHMARK(logCallsOff)->Name("log/off");
BENCHMARK(loggedFrames)->Name("log/frame")->Iterations(400)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
