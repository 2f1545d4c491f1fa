// Damaged files, as users have them and worse: what is wrong with each, and what an editor sees. The tables in
// docs/damaged-files.md have the same rows.
#pragma once

#include "damage/parser/Pieces.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace damage {

struct DamagedFile {
    const char* name;                       // of a file, without ".avi"
    const char* what;                       // what is wrong with it
    Bytes (*make)();
    const char* seen;                       // the text of sightOf()
    std::vector<const char*> logged = {};   // lines of the log about the damage, each once, in order
    std::uint64_t zerosAfter = 0;          // number of zero bytes after it, which may be a hole
};

// The files by kind.
std::span<const DamagedFile> brokenCaptures();      // interrupted captures, incomplete copies
std::span<const DamagedFile> brokenIndexes();       // "idx1"
std::span<const DamagedFile> brokenOpenDml();       // OpenDML indexes
std::span<const DamagedFile> brokenHeaders();       // headers and structure
std::span<const DamagedFile> extremeSizes();        // sizes at the limits of 31 and 32 bits
std::span<const DamagedFile> brokenStreams();       // too many streams, and other orders
std::span<const DamagedFile> brokenSounds();        // sound formats

// All files in that order.
std::vector<DamagedFile> damagedFiles();

// The file with that name. Throws std::out_of_range if there is none.
DamagedFile damagedFile(std::string_view name);

// The intact clip that the others are damaged copies of: 10 pictures and 0.4 seconds of sound, with "idx1".
Bytes honestClip();

}  // namespace damage
