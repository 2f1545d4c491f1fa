// The files that are read in every way that a disk has: the small ones and all of the catalogue.
#pragma once

#include "avi/AviParser.h"
#include "aviwriter/Blocks.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace damage {

struct ReadSample {
    std::string name;
    aviwriter::Bytes (*make)();
    std::uint64_t zerosBehind = 0;  // which are not in what `make` gives
    // Too many chunks or entries, or lists too deep, for the plainest parser. Whole, such a file is compared with
    // itself; its parts are compared with that parser where they are small enough.
    bool isCostly = false;
};

const std::vector<ReadSample>& readSamples();

// For the name of a failed test.
void PrintTo(const ReadSample& sample, std::ostream* out);

// Where a file is cut, or ends early: every position of a small file; of a larger one those at which something else
// begins or ends that a parser reads, and of the rest a few. `parser` has parsed the whole file.
std::vector<std::size_t> endsOf(const ReadSample& sample, const aviwriter::Bytes& bytes, const AviParser& parser);

}  // namespace damage
