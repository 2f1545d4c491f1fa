// What a file's own bytes and folder entry tell of it, without loading or opening it as what it is.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace importhost::validate {

struct FileFacts {
    std::uint64_t bytes = 0;
    std::string modified;       // UTC, "2024-05-06 07:08"; empty when the system does not tell
};

FileFacts factsOf(const std::filesystem::path& path);

// The version in a Windows library's resources, "1.0.0.0"; empty for a library without one. A library of unusual size
// is not read.
std::string libraryVersion(const std::filesystem::path& path);

// Of such a resource anywhere in the bytes of a library.
std::string versionInBytes(std::string_view bytes);

}  // namespace importhost::validate
