// Edits inside the records of an AVI file: sets one field to a value that is likely to matter.
#pragma once

#include "mutator/Random.h"
#include "mutator/RiffTree.h"

namespace fuzz {

// Changes one field of a chunk's data, a known one if the chunk's id has any. Returns false if the data is too short.
bool editField(RiffTree& tree, Chunk& chunk, Random& random);

// The same for an index chunk. Also makes the entries and their stated number disagree, changes their order, and makes
// indexes point at each other and at themselves. Returns false if the chunk is not an index.
bool editIndex(RiffTree& tree, Chunk& chunk, Random& random);

}  // namespace fuzz
