// The walk over a file's RIFF structure.
#pragma once

#include "avi/ChunkReader.h"
#include "avi/ChunkTree.h"

#include <cstdint>
#include <vector>

/// Fills `tree` with the chunks from the reader's start on, over a length of the whole file, and goes into every
/// list whose type is not among `closedTypes`. False when the structure does not hold together; `tree` then has
/// the chunks found so far. Sizes are trusted: a list that runs past its parent's end is walked as far as it says.
bool walkChunks(ChunkReader& reader, const std::vector<std::uint32_t>& closedTypes, ChunkTree& tree);
