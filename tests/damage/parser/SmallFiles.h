// Files of a kilobyte or two that contain everything that a parser reads: small enough to be cut at every byte. The
// expected result of each is in golden/NAME.txt, as avidump writes it.
#pragma once

#include "aviwriter/Blocks.h"

#include <span>

namespace damage {

using aviwriter::Bytes;

struct SmallFile {
    const char* name;
    Bytes (*make)();
};

std::span<const SmallFile> smallFiles();

}  // namespace damage
