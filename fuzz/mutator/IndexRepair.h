// Makes a file's indexes honest again after its structure has changed, so that what was changed is reached through
// them.
#pragma once

#include "mutator/RiffTree.h"

namespace fuzz {

// Fills "idx1", every "ix##" and every "indx" with what the file holds. Chunks that are missing are not added.
void repairIndexes(RiffTree& tree);

}  // namespace fuzz
