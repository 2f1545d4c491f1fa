// Damage from the field and worse: files with what is wrong in each, and what an editor sees of them. The table in
// docs/damaged-files.md has the same rows.
#pragma once

#include "damage/parser/Pieces.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
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

// The files by kind.
std::span<const DamagedFile> brokenCaptures();      // captures that broke off, copies that stopped
std::span<const DamagedFile> brokenIndexes();       // "idx1"
std::span<const DamagedFile> brokenOpenDml();       // OpenDML indexes
std::span<const DamagedFile> brokenHeaders();       // headers and structure
std::span<const DamagedFile> extremeSizes();        // sizes at the limits of their 31 and 32 bits
std::span<const DamagedFile> brokenStreams();       // streams, too many and in other orders
std::span<const DamagedFile> brokenSounds();        // sound formats

// All of them in that order.
std::vector<DamagedFile> damagedFiles();

// The one of that name; throws std::out_of_range when there is none.
DamagedFile damagedFile(std::string_view name);

// The clip that they are damaged copies of, 10 pictures and 0.4 seconds of sound, with "idx1".
Bytes honestClip();

}  // namespace damage
