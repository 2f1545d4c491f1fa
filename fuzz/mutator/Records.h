// Edits inside the records of an AVI file: one field at a time is given a number that is likely to matter.
#pragma once

#include "mutator/Random.h"
#include "mutator/RiffTree.h"

namespace fuzz {

// Changes one field of a chunk's data, a known one where the chunk's id has any. False when the data is too short.
bool editField(RiffTree& tree, Chunk& chunk, Random& random);

// The same for a chunk that is an index; also makes its entries and the number it claims of them disagree, changes
// their order, and lets them lead to each other and to themselves. False for a chunk that is none.
bool editIndex(RiffTree& tree, Chunk& chunk, Random& random);

}  // namespace fuzz
