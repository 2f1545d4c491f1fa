// How fast a plug-in serves one file, measured as the editor would wait for it.
//
// All times are milliseconds. What the played host does inside the plug-in's calls (it makes frame buffers) is part of
// them; `hostBuffer` tells how much that is.
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
    std::int64_t frames = 200;      // of each row, at most; 1 or more
    int busyMilliseconds = 8;       // what the host works on each frame while others are made ahead
    std::uint64_t seed = 0;         // of the random frames
};

// Things that were asked for one after another, and waited for.
struct Row {
    std::string name;               // "linear"
    Summary waits;                  // for each that was delivered
    double first = 0.0;             // the first of them, where it is told apart; it is not among the waits then
    double seconds = 0.0;           // of the whole row, with the host's own work; 0 where it has none
    Reads reads;                    // of the whole row
    std::size_t failed = 0;
};

struct SoundRow {
    csSDK_int32 stream = 0;
    csSDK_int32 channels = 0;
    std::uint32_t sampleRate = 0;       // Hz
    std::int64_t sampleFrames = 0;      // in the stream
    std::int64_t measured = 0;          // delivered, of those
    Row blocks;

    double timesRealTime() const;
    double bytesPerSecond() const;      // of 32-bit floats, as the host gets them
};

// Bytes, by the system's account of the whole program, which is no exact one.
struct MemoryUse {
    std::int64_t openClip = 0;          // more than before the first opening, after the first frame was given back
    std::int64_t afterAll = 0;          // the same at the end, the clip still open
    std::uint64_t programPeak = 0;      // the most so far, files before this one included
};

struct FileMeasurement {
    std::filesystem::path path;
    std::string video;                  // "640 x 360, 25.000 fps (25/1), 50 frames, 2Y8Q as yuy2"; empty without
    std::int64_t frameCount = 0;
    Row open;                           // opened and described
    Row firstFrame;                     // of a clip just opened
    double hostBuffer = 0.0;            // milliseconds, of making and giving back a frame buffer
    std::vector<Row> frames;            // at once: linear, reverse, random
    std::vector<Row> ahead;             // with a busy host: none ahead, 1, 2, ...
    std::string noAhead;                // why none could be fetched ahead; empty when they were
    std::vector<SoundRow> sound;
    MemoryUse memory;
    std::vector<std::string> failures;  // sentences; of many equal ones the first

    bool isGood() const { return failures.empty(); }
};

inline constexpr int kOpenings = 6;                                 // the first, which may find a cold disk, and others
inline constexpr std::size_t kAhead[] = {1, 2, 4, 8, 16};
inline constexpr std::int64_t kSoundBlock = 4096;                   // sample frames that are asked for at once
inline constexpr std::int64_t kMostSoundBlocks = 2000;              // of each stream

// Opens, measures and closes; failures of the file or the plug-in are told in the result. Throws hostkit::Interrupted.
FileMeasurement measureFile(Editor& editor, const std::filesystem::path& path, const BenchOptions& options);

// Several files as a table for people and as JSON for programs.
std::string asText(const FileMeasurement& file, const BenchOptions& options);
nlohmann::ordered_json asJson(const FileMeasurement& file);

}  // namespace importhost::bench
