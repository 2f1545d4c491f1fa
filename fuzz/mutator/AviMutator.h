// Mutations of an input that holds an AVI file: of its structure, indexes, records, script and plain bytes.
#pragma once

#include "mutator/Random.h"
#include "support/Input.h"

#include <functional>

namespace fuzz {

// Changes plain bytes without knowing their meaning. The result has at most `mostBytes`.
using PlainMutation = std::function<Bytes(Bytes bytes, std::size_t mostBytes)>;

// Returns an input of at most `mostBytes`.
Bytes mutateAvi(ByteView input, std::size_t mostBytes, Random& random, const PlainMutation& plain);

// Combines two inputs into one of at most `mostBytes`.
Bytes crossAvi(ByteView one, ByteView other, std::size_t mostBytes, Random& random);

}  // namespace fuzz
