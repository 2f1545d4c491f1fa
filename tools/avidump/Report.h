// What avidump says about a file, as a tree of names and values from which both JSON and text are written.
#pragma once

#include "avi/AviParser.h"

#include <nlohmann/json.hpp>

#include <string>

namespace avidump {

using Report = nlohmann::ordered_json;

// Report of a file that was opened; `usable` is the result of parsing it. An unusable file has no main header. If
// `withChunks`, each stream has "chunks": an array [position, size, start byte, key frame] for each chunk, in the
// order of the index in use.
Report makeReport(const std::string& pathUtf8, fileio::File& file, const AviParser& parser, bool usable,
                  bool withChunks);

// Report of a file that could not be opened.
Report makeFailedReport(const std::string& pathUtf8);

// The report as text for people, ending in a line feed.
std::string textOf(const Report& report);

}  // namespace avidump
