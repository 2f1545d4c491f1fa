// A question to the codec library's encoder, for diagnosis; importing needs none of it.
#pragma once

#include "codec/QuorvaneApi.h"

// What the encoder would make of frames of `input`; throws QuorvaneError when it takes no such frames.
QuorvaneFormat ProbeEncoder(const QuorvaneFormat& input);
