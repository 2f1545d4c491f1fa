// The parser once more, as plainly as it can be said: recursive, one small read after another, no limits. It is
// the measure for what reading ahead, an own stack and limits must not change.
#pragma once

#include "avi/AviParser.h"
#include "fileio/File.h"

#include <stdexcept>
#include <string>

/// Thrown for a file that cannot be parsed this way in reasonable time and memory.
class TooCostly : public std::runtime_error {
public:
    TooCostly() : std::runtime_error("too costly") {}
};

/// What becomes of a chunk header, or of the record in "avih", "strh" or "dmlh", when a read gives only a part of it:
/// it counts as missing, or it is read on until the file gives no more. Formats and indexes are one read each, and end
/// where that ends.
enum class ShortHeaders { missing, readOn };

/// Everything that a parse gives, as text.
std::string parseLiterally(fileio::File& file, ShortHeaders shortHeaders = ShortHeaders::missing);

/// The same text for the real parser, which has just parsed with this result.
std::string describe(const AviParser& parser, bool usable);
