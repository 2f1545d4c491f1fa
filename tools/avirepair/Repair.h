// From a broken file to a plan, and from a plan to a new file.
#pragma once

#include "avirepair/Plan.h"
#include "aviwriter/ByteSink.h"

#include <functional>

namespace avirepair {

struct Diagnosis {
    Scan scan{};
    IndexMatch index{};
    Plan plan{};
};

// `like` is another clip of the same camera or program, or null. The files must be open for reading. Throws
// std::runtime_error when a file cannot be read.
Diagnosis diagnose(fileio::File& file, fileio::File* like, const Options& options);

// An upper bound of the new file's size in bytes.
std::uint64_t sizeOf(const Plan& plan);

// The bytes of media written so far; throws to end the writing.
using Progress = std::function<void(std::uint64_t)>;

// Writes the new file; `file` is the one that the plan was made of. Throws std::runtime_error when reading or writing
// fails, and what `progress` throws.
void writeRepaired(const Plan& plan, fileio::File& file, aviwriter::ByteSink& sink, const Progress& progress);

}  // namespace avirepair
