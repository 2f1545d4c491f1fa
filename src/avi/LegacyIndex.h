// The index of AVI 1.0: one table at the end of the first RIFF, for all streams together.
#pragma once

#include "avi/AviStream.h"
#include "avi/ChunkReader.h"
#include "avi/ChunkTree.h"

#include <memory>
#include <vector>

/// Gives each stream, in file order, the entries of "idx1" whose chunk id begins with its two digits. Offsets are
/// taken as relative to the "movi" list type, never as absolute. Throws std::bad_alloc.
void readLegacyIndex(ChunkReader& reader, const ChunkNode& idx1, const ChunkNode& movi,
                     const std::vector<std::unique_ptr<AviStream>>& streams);
