// Small AVI files, built from blocks that show their bytes, and the parser's results.
#pragma once

#include "avi/AviParser.h"
#include "aviwriter/Blocks.h"
#include "support/MemoryFile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace samples {

using aviwriter::Bytes;

// A parse of bytes in memory, and its results.
struct Parsed {
    explicit Parsed(const Bytes& bytes) : file(bytes), usable(parser.parse(file)) {}

    const std::string& errors() const { return parser.errorText(); }
    const AviStream& stream(std::size_t index) const { return *parser.streams().at(index); }

    fileio::MemoryFile file;
    AviParser parser;
    bool usable;
};

// "strl" lists; `more` follows header and format.
Bytes videoStrl(const std::vector<Bytes>& more = {});
Bytes audioStrl(const std::vector<Bytes>& more = {});

// "hdrl" with its main header and these streams.
Bytes hdrl(const std::vector<Bytes>& strls);

// One video stream, a "movi" list of these chunks, and an "idx1" of these entries.
Bytes idx1File(const std::vector<Bytes>& chunks, const std::vector<aviwriter::Idx1Entry>& entries);

// One standard index of an openDmlFile(): it describes one chunk of media data per size, all in one "movi" list.
struct IndexPart {
    std::vector<std::uint32_t> sizes;          // plus aviwriter::kNotKeyFrame if it is no key frame
    aviwriter::StandardIndex overrides{};      // entries are filled in from the sizes
};

// One video stream whose OpenDML index has these parts, and an "idx1" with one entry of length 7 that shows when
// the OpenDML index is not in use. "indx" holds `super` with its entries filled in.
Bytes openDmlFile(const std::vector<IndexPart>& parts, const aviwriter::SuperIndex& super = {});

// File position of the i-th entry of the first "indx".
std::size_t superIndexEntryAt(const Bytes& file, std::size_t index);

// The active chunk list as "offset:size@startByte" with "k" after key frames, chunks separated by blanks.
std::string chunkText(const AviStream& stream);

}  // namespace samples
