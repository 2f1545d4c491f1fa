// When a new file by avirepair would show more of a clip than the clip itself does.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace importhost {

// Sentences; none for a clip that shows all that it holds. Looks through the whole file only where its headers and
// indexes lead to no frames. Never throws for what is in the file.
std::vector<std::string> repairAdvice(const std::filesystem::path& path);

}  // namespace importhost
