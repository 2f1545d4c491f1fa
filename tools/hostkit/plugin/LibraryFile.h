// What the file of a library says of itself, read from disk without loading it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace hostkit {

struct LibraryResource {
    std::string type;                       // its name, or its number as "#16"
    std::string name;                       // likewise
    std::vector<std::uint8_t> bytes;        // of its first language
};

struct LibraryFile {
    std::vector<std::string> exports;       // names, one without a name as "#3"; in alphabetical order
    std::vector<std::string> imports;       // file names of the libraries that are loaded with it, as they are spelt
    std::optional<std::vector<LibraryResource>> resources;      // nothing where the system's libraries have none
};

// Throws std::runtime_error with a whole sentence when the file cannot be read or is no 64-bit library of this system.
LibraryFile readLibraryFile(const std::filesystem::path& path);

}  // namespace hostkit
