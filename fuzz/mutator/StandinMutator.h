// Mutations of a stand-in stream: plain ones seldom get past the checksums, so these compress anew what they change.
#pragma once

#include "mutator/Random.h"
#include "support/Input.h"

namespace fuzz {

// `stream` is extra data with a frame behind it. Gives another such stream.
Bytes mutateStream(ByteView stream, Random& random);

}  // namespace fuzz
