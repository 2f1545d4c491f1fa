#include "open/Cases.h"

#include "aviwriter/AviFileWriter.h"
#include "standin/Encoder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace bench {

namespace {

// About the number of chunks per stream in a segment of one gigabyte at usual data rates.
constexpr std::uint64_t kEntriesPerIndex = 16 * 1024;
constexpr std::uint64_t kBytesPerChunk = 8 + 4 + 8;  // header, data, and its index entry

std::filesystem::path folder() {
    const char* named = std::getenv("QUORVANE_BENCH_FILES");
    if (!named) {
        throw std::runtime_error("QUORVANE_BENCH_FILES must name a folder for the files to open");
    }
    return named;
}

aviwriter::FileLayout layoutOf(const Case& of) {
    aviwriter::FileLayout layout;
    layout.index = of.openDml ? aviwriter::IndexKind::openDml : aviwriter::IndexKind::idx1;
    layout.segmentBytes = kEntriesPerIndex * kBytesPerChunk * of.streams;
    layout.superIndexRoom = static_cast<std::uint32_t>(of.chunks / of.streams / kEntriesPerIndex + 2);
    return layout;
}

void write(const Case& of, const std::filesystem::path& path) {
    aviwriter::FileSink sink(path);
    const std::vector<aviwriter::AudioTrack> sound(of.streams - 1);
    const standin::StreamInfo info = {.type = 104, .width = 32, .height = 16, .colorSpace = 2, .range = 1};
    aviwriter::AviFileWriter writer(sink, layoutOf(of), aviwriter::VideoTrack{
        .width = 32, .height = 16, .extraData = standin::encodeExtraData(info)}, sound);
    const aviwriter::Bytes data = aviwriter::u32(0x01020304);  // of a stereo stream, one sample frame
    for (std::uint64_t i = 0; i < of.chunks; ++i) {
        if (i % of.streams == 0) {
            writer.writeVideo(data);
        } else {
            writer.writeAudio(i % of.streams - 1, data);
        }
    }
    writer.finish();
    sink.close();
}

}  // namespace

std::string Case::name() const {
    return std::string(openDml ? "openDml" : "idx1") + "/" + std::to_string(chunks) + "-in-" + std::to_string(streams);
}

std::vector<std::uint64_t> Case::chunksOfStreams() const {
    std::vector<std::uint64_t> all(streams, chunks / streams);
    for (std::uint64_t stream = 0; stream < chunks % streams; ++stream) {
        ++all[stream];
    }
    return all;
}

std::string Case::file() const {
    std::string fileName = "indexed-" + name() + ".avi";
    fileName[fileName.find('/')] = '-';
    const std::filesystem::path path = folder() / fileName;
    if (!std::filesystem::exists(path)) {
        // An interrupted run must not leave an incomplete file under the final name.
        std::filesystem::path unfinished = path;
        unfinished += ".part";
        write(*this, unfinished);
        std::filesystem::rename(unfinished, path);
    }
    return path.string();
}

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const bool openDml : {true, false}) {
        for (const std::uint64_t chunks : {10'000, 100'000, 1'000'000, 2'000'000, 10'000'000}) {
            cases.push_back({openDml, chunks, 2});
        }
        for (const std::uint32_t streams : {1u, 8u, 32u}) {
            cases.push_back({openDml, 1'000'000, streams});
        }
    }
    return cases;
}

}  // namespace bench
