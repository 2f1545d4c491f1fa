// Whether anybody holds a file open.
#pragma once

#include <filesystem>

// Natively: this process, by any descriptor. On Windows: anybody, so that it cannot be opened for oneself alone.
bool isInUse(const std::filesystem::path& path);
