// Writes the catalogue's files to a folder.
#pragma once

#include "damage/catalogue/Catalogue.h"

#include <filesystem>

namespace damage {

// Both return the path, and throw std::runtime_error if the file cannot be written.
std::filesystem::path writeBytes(const std::filesystem::path& path, const Bytes& bytes);
std::filesystem::path writeDamaged(const std::filesystem::path& folder, const DamagedFile& file);

// Whether a file with `zeros` zero bytes can be created in the folder: some file systems support no holes and have no
// room, and some support no files of 4 GiB.
bool canHold(const std::filesystem::path& folder, std::uint64_t zeros);

}  // namespace damage
