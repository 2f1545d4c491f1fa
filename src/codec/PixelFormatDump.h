// The log's picture of what the host and the codec say of pixel formats, written once after the tables are built.
#pragma once

#include "codec/QuorvaneApi.h"
#include "sdk/SdkSuites.h"

// Writes the dump; asks nothing of the codec while the log is off. Throws std::runtime_error when the host has no
// Image Processing Suite.
void DumpPixelFormats(SPBasicSuite* basicSuite);

// What the codec's encoder would make of frames of `input`; throws QuorvaneError when it takes no such frames. Nothing
// on the way of a frame asks.
QuorvaneFormat ProbeEncoder(const QuorvaneFormat& input);
