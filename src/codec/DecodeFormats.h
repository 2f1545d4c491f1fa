// Which host pixel formats a stream can be offered in.
#pragma once

#include "codec/PixelFormatTables.h"
#include "codec/QuorvaneApi.h"

#include <cstdint>
#include <vector>

// The request that has the codec deliver a host pixel format.
QuorvaneFormat decodeRequest(const FormatInfo& info);

// The formats the codec can decode the stream into, in table order: those that its compressed type prefers, or all of
// them when it prefers none of these. Throws QuorvaneError when the codec does not describe the stream, and
// std::runtime_error when the tables do not know its type.
std::vector<FormatInfo> findDecodeFormats(const std::vector<std::uint8_t>& compressedFormat);
