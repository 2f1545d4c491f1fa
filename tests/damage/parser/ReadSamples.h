// The files to read in every way that a disk can behave: the small ones and the whole catalogue.
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
    std::uint64_t zerosAfter = 0;  // after the bytes that `make` returns
    // Too many chunks or entries, or lists too deep, for the plainest parser. The whole file is then compared with
    // itself, and parts that are small enough with that parser.
    bool isCostly = false;
};

const std::vector<ReadSample>& readSamples();

// For the name of a failed test.
void PrintTo(const ReadSample& sample, std::ostream* out);

// The positions at which to cut or end a file: all of a small file; in a larger one those at which something that a
// parser reads begins or ends, and a few others. `parser` has parsed the whole file.
std::vector<std::size_t> endsOf(const ReadSample& sample, const aviwriter::Bytes& bytes, const AviParser& parser);

}  // namespace damage
