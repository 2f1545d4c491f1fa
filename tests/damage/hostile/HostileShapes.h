// Files made to be expensive: each overstates, repeats or scatters something that a parser may follow.
#pragma once

#include "aviwriter/Blocks.h"

#include <cstddef>
#include <span>

namespace damage {

struct HostileShape {
    const char* name;                                  // of a file, without ".avi"
    const char* what;                                  // short description
    aviwriter::Bytes (*make)(std::size_t bytes);       // returns about `bytes` bytes, to one unit of the shape
};

// All shapes. Every file begins with the headers of one small video stream of the stand-in codec, so that the plug-in
// has something to describe, unless the shape is in the headers themselves.
std::span<const HostileShape> hostileShapes();

// The shape with this name. Throws std::out_of_range if there is none.
const HostileShape& hostileShape(const char* name);

}  // namespace damage
