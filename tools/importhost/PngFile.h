// Writing pictures as PNG files.
#pragma once

#include "importhost/Picture.h"

#include <filesystem>

namespace importhost {

// Replaces the file. Throws std::runtime_error when it cannot be written.
void writePng(const Picture& picture, const std::filesystem::path& path);

}  // namespace importhost
