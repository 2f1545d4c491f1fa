// Files made to cost much: each claims, repeats or scatters all that a parser could be made to follow.
#pragma once

#include "aviwriter/Blocks.h"

#include <cstddef>
#include <span>

namespace damage {

struct HostileShape {
    const char* name;                                  // as a file would be called, without ".avi"
    const char* what;                                  // what it holds, in a few words
    aviwriter::Bytes (*make)(std::size_t bytes);       // a file of so many bytes, give or take one unit of the shape
};

// All of them. Every file begins with the headers of one small video stream of the stand-in codec, unless the shape is
// in the headers themselves; so the plug-in has something to describe.
std::span<const HostileShape> hostileShapes();

// Throws std::out_of_range.
const HostileShape& hostileShape(const char* name);

}  // namespace damage
