// Finds out why a file cannot be opened for reading.
#pragma once

#include <filesystem>
#include <string>

// The end of a message, such as "there is no such file" or "it is a directory". Call it only after an open failed: a
// readable file gets a text too.
std::string openFailure(const std::filesystem::path& path);
