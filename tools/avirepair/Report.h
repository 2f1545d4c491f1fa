// What was wrong with a file and what became of it, for people and for programs.
#pragma once

#include "avirepair/Repair.h"

#include <string>

namespace avirepair {

// What the files are called; `output` is empty when nothing is written.
struct Names {
    std::string input;
    std::string output;
};

std::string textReport(const Diagnosis& found, const Names& names, const Options& options);
std::string jsonReport(const Diagnosis& found, const Names& names, const Options& options);

// A line for every chunk that was found: position, id, size, and what is known of it.
std::string chunkLine(const FoundChunk& chunk);

// "1:02:03.456"
std::string timeText(double seconds);

// What the run came to.
constexpr int kExitRepaired = 0;
constexpr int kExitNothing = 1;         // nothing could be saved, or a file could not be read or written
constexpr int kExitUsage = 2;
constexpr int kExitLosses = 3;

int exitCodeOf(const Plan& plan);

}  // namespace avirepair
