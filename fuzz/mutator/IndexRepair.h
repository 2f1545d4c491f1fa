// Corrects a file's indexes after its structure has changed, so that the changed parts are reached through them.
#pragma once

#include "mutator/RiffTree.h"

namespace fuzz {

// Rewrites "idx1", every "ix##" and every "indx" to match the file. Does not add missing chunks.
void repairIndexes(RiffTree& tree);

}  // namespace fuzz
