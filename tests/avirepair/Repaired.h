// A file in memory, repaired.
#pragma once

#include "avirepair/Report.h"
#include "avirepair/Repair.h"
#include "damage/catalogue/Catalogue.h"
#include "support/MemoryFile.h"

#include <string>
#include <vector>

using aviwriter::Bytes;

inline avirepair::Diagnosis diagnosed(const Bytes& bytes, const avirepair::Options& options = {}) {
    fileio::MemoryFile file(bytes);
    return avirepair::diagnose(file, nullptr, options);
}

inline Bytes repairedBytes(const Bytes& bytes, const avirepair::Options& options = {}) {
    fileio::MemoryFile file(bytes);
    const avirepair::Diagnosis found = avirepair::diagnose(file, nullptr, options);
    aviwriter::MemorySink sink;
    avirepair::writeRepaired(found.plan, file, sink, [](std::uint64_t) {});
    return sink.bytes();
}

// The video of a plan, a letter a frame: "+" copied, "d" dropped while recording, "x" lost.
inline std::string videoOf(const avirepair::Plan& plan) {
    std::string frames;
    for (const avirepair::PlannedChunk& chunk : plan.chunks) {
        if (plan.streams[chunk.stream].isVideo) {
            frames += "+dx"[chunk.kind];
        }
    }
    return frames;
}

// The sound of a plan, in sample frames: "+" copied, "x" silence, as in "+3840 x1920 +9600".
inline std::string soundOf(const avirepair::Plan& plan) {
    std::vector<std::pair<char, std::uint64_t>> parts;
    for (const avirepair::PlannedChunk& chunk : plan.chunks) {
        const avirepair::PlannedStream& stream = plan.streams[chunk.stream];
        if (!stream.isSound || chunk.size == 0) {
            continue;
        }
        const char kind = "+dx"[chunk.kind];
        if (parts.empty() || parts.back().first != kind) {
            parts.emplace_back(kind, 0);
        }
        parts.back().second += chunk.size / stream.sampleBytes;
    }
    std::string text;
    for (const auto& [kind, frames] : parts) {
        text += (text.empty() ? "" : " ") + std::string(1, kind) + std::to_string(frames);
    }
    return text;
}
