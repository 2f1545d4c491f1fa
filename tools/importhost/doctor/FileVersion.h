// Versions as numbers, and what the file of a library states about itself.
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

// "1.2" or up to four numbers; what is missing, or is no number, is 0.
FileVersion versionOf(std::string_view text);

// "1.2.3", with the fourth number only when it is not 0.
std::string asText(const FileVersion& version);

// From the version resource; nothing in files without one, and on systems without resources.
std::optional<FileVersion> fileVersion(const hostkit::LibraryFile& file);
std::string fileDescription(const hostkit::LibraryFile& file);          // then empty

}  // namespace importhost::doctor
