// Version numbers, and the version and description in a library's file.
#pragma once

#include "hostkit/plugin/LibraryFile.h"

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace importhost::doctor {

struct FileVersion {
    std::array<std::uint32_t, 4> numbers = {};

    auto operator<=>(const FileVersion&) const = default;
};

// Parses "1.2" or up to four numbers; missing or invalid ones are 0.
FileVersion versionOf(std::string_view text);

// "1.2.3"; the fourth number is included unless it is 0.
std::string asText(const FileVersion& version);

// From the version resource; empty for files without one, and on systems without resources.
std::optional<FileVersion> fileVersion(const hostkit::LibraryFile& file);
std::string fileDescription(const hostkit::LibraryFile& file);          // likewise

}  // namespace importhost::doctor
