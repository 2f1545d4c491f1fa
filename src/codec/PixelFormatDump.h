// Logs what the host and the codec say about pixel formats, once, after the tables are built.
#pragma once

#include "codec/QuorvaneApi.h"
#include "sdk/SdkSuites.h"

// Writes the dump; while the log is off the codec is not asked. Throws std::runtime_error if the host has no Image
// Processing Suite.
void DumpPixelFormats(SPBasicSuite* basicSuite);

// Returns the format the codec's encoder would make of frames of `input`; throws QuorvaneError if it does not accept
// such frames. Not used for decoding.
QuorvaneFormat ProbeEncoder(const QuorvaneFormat& input);
