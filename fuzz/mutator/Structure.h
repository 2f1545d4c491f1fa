// Edits of a file's structure: whole chunks and lists come, go, change places and lie about their sizes.
#pragma once

#include "mutator/Random.h"
#include "mutator/RiffTree.h"

namespace fuzz {

// Makes one change. The tree must hold a chunk.
void editStructure(RiffTree& tree, Random& random);

// Copies a chunk of `other` into `tree`. Both must hold one.
void takeChunk(RiffTree& tree, RiffTree& other, Random& random);

}  // namespace fuzz
