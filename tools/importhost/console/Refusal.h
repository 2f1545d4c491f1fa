// Finds out why the plug-in refused a file, as far as the file itself shows.
#pragma once

#include <filesystem>
#include <string>

namespace importhost {

// The end of a message about a file that was opened but not described: "it does not begin as an AVI file does", or
// where to find the plug-in's own message. For a file that could not be opened, use openFailure().
std::string describeRefusal(const std::filesystem::path& path);

}  // namespace importhost
