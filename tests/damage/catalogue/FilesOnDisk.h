// The catalogue's files in a folder.
#pragma once

#include "damage/catalogue/Catalogue.h"

#include <filesystem>

namespace damage {

// Both give the path, and throw std::runtime_error when the disk refuses.
std::filesystem::path writeBytes(const std::filesystem::path& path, const Bytes& bytes);
std::filesystem::path writeDamaged(const std::filesystem::path& folder, const DamagedFile& file);

// Whether a file with so many zeros can be made in the folder: some file systems know no holes and have no room, and
// some know no file of 4 GiB.
bool canHold(const std::filesystem::path& folder, std::uint64_t zeros);

}  // namespace damage
