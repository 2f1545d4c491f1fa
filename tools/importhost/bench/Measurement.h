// Measures how fast a plug-in reads one file, as the time that an editor would wait.
//
// All times are in milliseconds. They include what the simulated host does during the plug-in's calls (creating frame
// buffers); `hostBuffer` is that part.
#pragma once

#include "importhost/bench/ReadCounter.h"
#include "importhost/bench/Statistics.h"
#include "importhost/clips/Editor.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace importhost::bench {

struct BenchOptions {
    std::int64_t frames = 200;      // per row, at most; 1 or more
    int busyMilliseconds = 8;       // how long the host works on each frame, with others announced
    std::uint64_t seed = 0;         // for the random frames
};

// Requests made one after another, and waited for.
struct Row {
    std::string name;               // "linear"
    Summary waits;                  // of those that were delivered
    double first = 0.0;             // the first request, if listed separately; not included in the waits
    double seconds = 0.0;           // of the whole row, including the host's own work; 0 if it has none
    Reads reads;                    // of the whole row
    std::size_t failed = 0;
};

struct SoundRow {
    csSDK_int32 stream = 0;
    csSDK_int32 channels = 0;
    std::uint32_t sampleRate = 0;       // Hz
    std::int64_t sampleFrames = 0;      // in the stream
    std::int64_t measured = 0;          // delivered sample frames
    Row blocks;

    double timesRealTime() const;
    double bytesPerSecond() const;      // of 32-bit floats, as the host gets them
};

// Bytes, as reported by the system for the whole program; not exact.
struct MemoryUse {
    std::int64_t openClip = 0;          // growth from before the first opening to after the first frame was released
    std::int64_t afterAll = 0;          // the same at the end, with the clip still open
    std::uint64_t programPeak = 0;      // peak so far, including earlier files
};

struct FileMeasurement {
    std::filesystem::path path;
    std::string video;                  // "640 x 360, 25.000 fps (25/1), 50 frames, 2Y8Q as yuy2"; empty without
    std::int64_t frameCount = 0;
    Row open;                           // opening and description
    Row firstFrame;                     // of a newly opened clip
    double hostBuffer = 0.0;            // milliseconds to create and release a frame buffer
    std::vector<Row> frames;            // synchronous: linear, reverse, random
    std::vector<Row> ahead;             // with a busy host: none ahead, 1, 2, ...
    std::string noAhead;                // why there are no asynchronous frames; empty otherwise
    std::vector<SoundRow> sound;
    MemoryUse memory;
    std::vector<std::string> failures;  // sentences; only the first of several equal ones

    bool isGood() const { return failures.empty(); }
};

inline constexpr int kOpenings = 6;                                 // the first may have to read from disk
inline constexpr std::size_t kAhead[] = {1, 2, 4, 8, 16};
inline constexpr std::int64_t kSoundBlock = 4096;                   // sample frames per request
inline constexpr std::int64_t kMostSoundBlocks = 2000;              // per stream

// Opens, measures and closes a file; failures of the file or the plug-in are in the result. Throws
// hostkit::Interrupted.
FileMeasurement measureFile(Editor& editor, const std::filesystem::path& path, const BenchOptions& options);

// Measurements as a table for people and as JSON for programs.
std::string asText(const FileMeasurement& file, const BenchOptions& options);
nlohmann::ordered_json asJson(const FileMeasurement& file);

}  // namespace importhost::bench
