// The files to measure with: written when they are not there yet, and kept from run to run.
#pragma once

#include "aviwriter/Sample.h"

#include <filesystem>
#include <string>

// The folder for them: the environment variable QUORVANE_BENCH_FILES, else one in the system's folder for temporary
// files.
std::filesystem::path sampleFolder();

// A sample of that name. Throws std::runtime_error when it cannot be written.
std::filesystem::path sampleFile(const std::string& name, const aviwriter::SampleOptions& options);
