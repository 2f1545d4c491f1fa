// Describing files for the report: each in a child process, for what a plug-in does to its process must not reach the
// report.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

#include <nlohmann/json.hpp>

namespace importhost::validate {

struct FileDescriptions {
    nlohmann::ordered_json offers;      // what the plug-in offers, or null when no child came so far
    nlohmann::ordered_json files;       // an array, an object for each file
};

// The user's files, or a few telling ones of the samples in the work folder, where the children write too. What went
// wrong with a file is told by "problem" in its object.
FileDescriptions describeFiles(const RunOptions& options);

// The child's side: describes the file and writes that to `out` as it goes. Throws CannotLoad.
void describeTo(const std::filesystem::path& out, const std::filesystem::path& file,
                const std::filesystem::path& plugin);

}  // namespace importhost::validate
