// Delivering sound to the host's buffers, compared with memcpy of the same bytes from one buffer to another. Reads do
// not count; everything else in a request does, including the search for the chunk and the seeks. For 8-bit sound the
// host's conversion does not count either: what remains is the change of signs.
#include "measured/MeasuredClip.h"
#include "measured/SampleFiles.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using aviwriter::SampleFormat;

// 25 chunks of sound per second, as a recorder writes them. Requests begin in the middle of a chunk in the middle of
// the file.
constexpr std::uint32_t kVideoFrames = 12 * 25;
constexpr PrAudioSample kStart = 48000 + 777;

std::filesystem::path soundClip(SampleFormat format, std::uint16_t channels) {
    const std::string name = "sound-25-a-second-" + std::to_string(aviwriter::bitsPerSample(format)) + "-" +
                             std::to_string(channels) + ".avi";
    return sampleFile(name, {.width = 32, .height = 16, .frames = kVideoFrames,
                             .audio = {{.format = format, .channels = channels}}});
}

void request(benchmark::State& state, const std::filesystem::path& file, PrAudioSample start) {
    const auto frames = static_cast<csSDK_uint32>(state.range(0));
    MeasuredPlugin plugin(1);
    MeasuredClip clip(plugin, file, frames);
    clip.getSound(start, frames);
    plugin.spy().reads().leaveOut(true);
    for (auto _ : state) {
        clip.getSound(start, frames);
        benchmark::ClobberMemory();
    }
}

void sound(benchmark::State& state, SampleFormat format, std::uint16_t channels) {
    request(state, soundClip(format, channels), kStart);
}

// Little but the change of signs: one chunk holds the whole second, so there is only one seek.
void signs(benchmark::State& state) {
    const aviwriter::SampleOptions options = {.width = 32, .height = 16, .frames = 3, .rate = 1,
                                              .audio = {{.format = SampleFormat::pcm8, .channels = 2}}};
    request(state, sampleFile("sound-1-a-second-8-2.avi", options), 0);
}

void copy(benchmark::State& state, SampleFormat format, std::uint16_t channels) {
    const auto bytes = static_cast<std::size_t>(state.range(0)) * channels * (aviwriter::bitsPerSample(format) / 8);
    const std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes, 2);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
}

// The length of one video frame, one second and ten seconds at 48 kHz.
#define SOUND_ROWS(name, format, channels)                                                                            \
    BENCHMARK_CAPTURE(sound, name, format, channels)->Name("audio/plugin/" #name)->Arg(1920)->Arg(48000)->Arg(480000); \
    BENCHMARK_CAPTURE(copy, name, format, channels)->Name("audio/memcpy/" #name)->Arg(1920)->Arg(48000)->Arg(480000)

SOUND_ROWS(float32x2, SampleFormat::float32, 2);
SOUND_ROWS(float32x8, SampleFormat::float32, 8);
SOUND_ROWS(pcm8x2, SampleFormat::pcm8, 2);
BENCHMARK(signs)->Name("audio/signs/pcm8x2")->Arg(48000);

}  // namespace

BENCHMARK_MAIN();
