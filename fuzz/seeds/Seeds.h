// The initial inputs of the fuzzers.
#pragma once

#include "support/Input.h"

#include <string>
#include <vector>

namespace fuzz {

struct Seed {
    std::string name;
    Bytes bytes;
};
using SeedList = std::vector<Seed>;

// AVI files: every compressed type and sound format, each index, several segments, dropped frames, damage.
SeedList sampleFiles();

// Each file with scripts appended: those that say how it is read, and those that also say what is asked of it.
SeedList withReadScripts(const SeedList& files);
SeedList withImportScripts(const SeedList& files);

// Inputs of the other fuzzers.
SeedList audioFormats();
SeedList standinStreams();

}  // namespace fuzz
