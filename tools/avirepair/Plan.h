// What the new file will hold, decided from what was found, before anything is written.
#pragma once

#include "avirepair/Index.h"
#include "avirepair/Scanner.h"

#include <string>
#include <vector>

namespace avirepair {

struct Options {
    bool closesGaps = false;        // instead of filling them
    bool takesAll = false;          // chunks that are doubtful, or that a sound index leaves out
};

struct PlannedStream {
    Bytes header{};                 // "strh" with its length and sample size set
    Bytes format{};
    Bytes more{};
    std::uint16_t found = 0;        // its place among the streams that were found
    std::uint32_t sampleBytes = 0;  // 0: the length counts chunks
    std::uint64_t bytes = 0;
    std::uint64_t chunks = 0;
    std::uint64_t keyFrames = 0;
    std::uint64_t dropped = 0;      // while recording
    std::uint64_t lost = 0;         // frames, or bytes of sound, that are filled in
    ChunkType type = ChunkType::dc; // of its first chunk
    bool isVideo = false;
    bool isSound = false;

    std::uint64_t length() const { return sampleBytes > 0 ? bytes / sampleBytes : chunks; }
    double seconds(std::uint64_t units) const;      // that so many frames or sample frames last; 0 when unknown
};

struct PlannedChunk {
    enum Kind : std::uint8_t { copied, dropped, lost };
    std::uint64_t source = 0;       // of its header
    std::uint32_t size = 0;
    std::uint16_t stream = 0;       // among the planned streams
    ChunkType type = ChunkType::dc;
    std::uint8_t kind : 2 = copied;
    bool isKey : 1 = true;
    bool hasHeader : 1 = true;      // the header in the file, and its padding, can be copied as they are
};
static_assert(sizeof(PlannedChunk) == 16);

// A stretch of a stream that is not in the new file, or is filled in.
struct Loss {
    std::size_t stream = 0;
    double begin = 0;               // seconds in the new file
    double seconds = 0;
    std::uint64_t frames = 0;       // of video
};

struct Plan {
    Bytes mainHeader{};
    std::vector<PlannedStream> streams{};
    std::vector<PlannedChunk> chunks{};
    std::vector<Loss> losses{};
    std::vector<std::string> wrong{};       // sentences: what was wrong in the file
    std::vector<std::string> notes{};       // sentences: what was decided
    bool hasLosses = false;
    std::uint64_t bytes = 0;                // of the chunks with their headers

    bool isEmpty() const { return streams.empty() || chunks.empty(); }
};

// `like` stands in for the headers when it is given.
Plan makePlan(const Scan& scan, const IndexMatch& index, const Options& options, const Scan* like = nullptr);

}  // namespace avirepair
