// Pictures as PNG files.
#pragma once

#include "importhost/pictures/Picture.h"

#include <filesystem>
#include <string>

namespace importhost {

// The file's bytes. Throws std::runtime_error for a picture that PNG cannot represent.
std::string pngBytes(const Picture& picture);

// Replaces the file. Throws std::runtime_error on failure.
void writePng(const Picture& picture, const std::filesystem::path& path);

}  // namespace importhost
