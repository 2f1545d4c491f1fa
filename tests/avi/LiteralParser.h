// A second parser, as plain as possible: recursive, one small read after another, no limits. The real parser's read
// buffers, stack and limits must not change its results.
#pragma once

#include "avi/AviParser.h"
#include "fileio/File.h"

#include <stdexcept>
#include <string>

// Thrown for a file that cannot be parsed this way in reasonable time and memory.
class TooCostly : public std::runtime_error {
public:
    TooCostly() : std::runtime_error("too costly") {}
};

// How to treat a chunk header, or the record in "avih", "strh" or "dmlh", if a read returns only part of it: it counts
// as missing, or reading continues until the file returns no more. Formats and indexes are one read each, and end
// where that ends.
enum class ShortHeaders { missing, readOn };

// The complete result of a parse, as text.
std::string parseLiterally(fileio::File& file, ShortHeaders shortHeaders = ShortHeaders::missing);

// The same text for the real parser, after it has parsed a file with the result `usable`.
std::string describe(const AviParser& parser, bool usable);
