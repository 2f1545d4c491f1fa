// What a repair costs: a sound file of 512 MiB through scan, plan and writer, against a plain copy that reads and
// writes in pieces, and against the system's own copy. All from and to the system's cache and the same disk.
#include "avirepair/Repair.h"
#include "aviwriter/AviFileWriter.h"
#include "fileio/SystemFile.h"
#include "measured/SampleFiles.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kFrames = 1700;
constexpr std::size_t kFrameBytes = 300'000;
constexpr std::size_t kSoundBytes = 7680;
constexpr std::size_t kPiece = std::size_t{1} << 20;

// Frames that compress to nothing are of no use here: their bytes are never looked at.
fs::path sourceFile() {
    const fs::path path = sampleFolder() / "repair-512MiB.avi";
    if (fs::exists(path)) {
        return path;
    }
    fs::create_directories(sampleFolder());
    aviwriter::FileSink sink(path);
    aviwriter::AviFileWriter writer(sink, {}, aviwriter::VideoTrack{}, {aviwriter::AudioTrack{}});
    for (std::uint32_t frame = 0; frame < kFrames; ++frame) {
        writer.writeVideo(aviwriter::filled(kFrameBytes, static_cast<std::uint8_t>(frame | 1)));
        writer.writeAudio(0, aviwriter::filled(kSoundBytes));
    }
    writer.finish();
    sink.close();
    return path;
}

fs::path targetFile() { return sampleFolder() / "repair-copy.avi"; }

void open(fileio::SystemFile& file, const fs::path& path) {
    if (!file.open(path.c_str(), fileio::kOpenRead | fileio::kOpenShareRead)) {
        throw std::runtime_error("the file to repair does not open");
    }
}

// `make` writes the target; the target of the time before is not there any more.
template <typename Make>
void measure(benchmark::State& state, Make make) {
    const fs::path source = sourceFile();
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove(targetFile());
        state.ResumeTiming();
        make(source);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fs::file_size(source)));
    fs::remove(targetFile());
}

void repair(benchmark::State& state) {
    measure(state, [](const fs::path& source) {
        fileio::SystemFile file;
        open(file, source);
        const avirepair::Diagnosis found = avirepair::diagnose(file, nullptr, {});
        aviwriter::FileSink sink(targetFile());
        avirepair::writeRepaired(found.plan, file, sink, [](std::uint64_t) {});
        sink.close();
    });
}

void scan(benchmark::State& state) {
    const fs::path source = sourceFile();
    for (auto _ : state) {
        fileio::SystemFile file;
        open(file, source);
        benchmark::DoNotOptimize(avirepair::diagnose(file, nullptr, {}).plan.bytes);
    }
}

void plainCopy(benchmark::State& state) {
    measure(state, [](const fs::path& source) {
        fileio::SystemFile file;
        open(file, source);
        aviwriter::FileSink sink(targetFile());
        aviwriter::Bytes piece(kPiece);
        for (std::uint64_t position = 0;; position += piece.size()) {
            piece.resize(static_cast<std::size_t>(file.read(piece.data(), kPiece)));
            if (piece.empty()) {
                break;
            }
            sink.write(position, piece);
        }
        sink.close();
    });
}

void systemCopy(benchmark::State& state) {
    measure(state, [](const fs::path& source) { fs::copy_file(source, targetFile()); });
}

BENCHMARK(repair)->Name("repair/sound")->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(scan)->Name("repair/scan")->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(plainCopy)->Name("repair/plain-copy")->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(systemCopy)->Name("repair/system-copy")->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
