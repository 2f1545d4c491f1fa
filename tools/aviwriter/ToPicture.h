// Converts a drawing to the components of a compressed type.
#pragma once

#include "aviwriter/Canvas.h"
#include "standin/Encoder.h"

namespace aviwriter {

// The canvas with the components, bit depth, colour matrix, range and subsampling of `info`. Exact integer arithmetic,
// rounding to nearest: the same picture on every system. Alpha always has full range; a subsampled chroma sample is the
// mean of the pixels it covers. Throws std::invalid_argument for an unknown type.
standin::Picture toPicture(const Canvas& canvas, const standin::StreamInfo& info);

}  // namespace aviwriter
