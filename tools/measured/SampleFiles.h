// The files to measure with: written if missing, and kept between runs.
#pragma once

#include "aviwriter/Sample.h"

#include <filesystem>
#include <string>

// The folder for them: the environment variable QUORVANE_BENCH_FILES, or else a folder in the system's temporary
// folder.
std::filesystem::path sampleFolder();

// A sample with that name. Throws std::runtime_error if it cannot be written.
std::filesystem::path sampleFile(const std::string& name, const aviwriter::SampleOptions& options);
