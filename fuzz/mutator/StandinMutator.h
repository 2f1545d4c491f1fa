// Mutations of a stand-in stream: plain ones seldom get past the checksums, so these compress the changed data again.
#pragma once

#include "mutator/Random.h"
#include "support/Input.h"

namespace fuzz {

// `stream` is extra data followed by a frame. Returns another such stream.
Bytes mutateStream(ByteView stream, Random& random);

}  // namespace fuzz
