// Edits of a file's structure: adds, removes and moves whole chunks and lists, and misstates their sizes.
#pragma once

#include "mutator/Random.h"
#include "mutator/RiffTree.h"

namespace fuzz {

// Makes one change. The tree must hold at least one chunk.
void editStructure(RiffTree& tree, Random& random);

// Copies a chunk of `other` into `tree`. Both must hold at least one.
void takeChunk(RiffTree& tree, RiffTree& other, Random& random);

}  // namespace fuzz
