// What avidump says about a file, as a tree of names and values that JSON and text are both written from.
#pragma once

#include "avi/AviParser.h"

#include <nlohmann/json.hpp>

#include <string>

namespace avidump {

using Report = nlohmann::ordered_json;

/// One file that was opened and parsed with this result; an unusable one has no main header. With `withChunks`, each
/// stream has its "chunks": an array [position, size, running byte, key frame] for each, in the order of the index in
/// use.
Report makeReport(const std::string& pathUtf8, fileio::File& file, const AviParser& parser, bool usable,
                  bool withChunks);

/// One file that could not be opened.
Report makeFailedReport(const std::string& pathUtf8);

/// The report as text for people, ending in a line feed.
std::string textOf(const Report& report);

}  // namespace avidump
