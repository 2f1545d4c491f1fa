// The index of AVI 1.0: one table at the end of the first RIFF, for all streams.
#pragma once

#include "avi/AviStream.h"
#include "avi/ChunkReader.h"
#include "avi/ChunkTree.h"

#include <memory>
#include <vector>

// Adds to each stream, in file order, the "idx1" entries whose chunk id starts with its two digits. Offsets are always
// relative to the "movi" list type, never absolute. Throws std::bad_alloc.
void readLegacyIndex(ChunkReader& reader, const ChunkNode& idx1, const ChunkNode& movi,
                     const std::vector<std::unique_ptr<AviStream>>& streams);
