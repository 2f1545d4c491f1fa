// Whether a file is open.
#pragma once

#include <filesystem>

// True if the file is open natively in this process, by any descriptor, or on Windows in any process, so that it cannot
// be opened exclusively.
bool isInUse(const std::filesystem::path& path);
