// Damage from the field and worse: files with what is wrong in each, and what an editor sees of them. The table in
// docs/damaged-files.md has the same rows.
#pragma once

#include "damage/Pieces.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace damage {

struct DamagedFile {
    const char* name;                       // as a file would be called, without ".avi"
    const char* what;                       // what is wrong with it
    Bytes (*make)();
    const char* seen;                       // as Sighting::text says it
    std::vector<const char*> logged = {};   // lines of the log that tell of the damage, each once, in their order
    std::uint64_t zerosBehind = 0;          // bytes of zeros behind it, which take no room where disks know holes
};

// The files by kind: a capture that broke off and copies of a file, indexes, headers and structure, streams and sound.
std::span<const DamagedFile> brokenCaptures();
std::span<const DamagedFile> brokenIndexes();
std::span<const DamagedFile> brokenHeaders();
std::span<const DamagedFile> brokenStreams();

// All of them in that order.
std::vector<DamagedFile> damagedFiles();

// The clip that they are damaged copies of, 10 pictures and 0.4 seconds of sound, with "idx1".
Bytes honestClip();

}  // namespace damage
