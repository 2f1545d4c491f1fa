// Mutations of an input whose file is an AVI file: of its structure, its indexes and its records, of the script, and
// of plain bytes.
#pragma once

#include "mutator/Random.h"
#include "support/Input.h"

#include <functional>

namespace fuzz {

// Changes plain bytes without knowing what they are; what comes back has at most `mostBytes`.
using PlainMutation = std::function<Bytes(Bytes bytes, std::size_t mostBytes)>;

// Gives an input of at most `mostBytes`.
Bytes mutateAvi(ByteView input, std::size_t mostBytes, Random& random, const PlainMutation& plain);

// One input made of two.
Bytes crossAvi(ByteView one, ByteView other, std::size_t mostBytes, Random& random);

}  // namespace fuzz
