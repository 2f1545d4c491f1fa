// The walk over a file's RIFF structure.
#pragma once

#include "avi/ChunkReader.h"
#include "avi/ChunkTree.h"

#include <cstdint>
#include <vector>

// Fills `tree` with the chunks from the reader's start to the end of the file, entering every list whose type is not
// in `closedTypes`. Returns false if the structure is inconsistent; `tree` then has the chunks found so far. Sizes are
// trusted: a list that extends past its parent's end is walked to its own end.
bool walkChunks(ChunkReader& reader, const std::vector<std::uint32_t>& closedTypes, ChunkTree& tree);
