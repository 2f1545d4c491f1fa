// Why the plug-in refused a file, as far as the file itself tells.
#pragma once

#include <filesystem>
#include <string>

namespace importhost {

// For the end of a message about a file that was opened and not described: "it does not begin as an AVI file does", or
// how to get the plug-in's own words. For one that was not opened there is openFailure().
std::string describeRefusal(const std::filesystem::path& path);

}  // namespace importhost
