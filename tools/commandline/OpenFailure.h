// Why a file cannot be opened for reading.
#pragma once

#include <filesystem>
#include <string>

// For the end of a message: "there is no such file", "it is a directory". To be asked after an open failed, as a file
// that is in order gets a text too.
std::string openFailure(const std::filesystem::path& path);
