// Which host pixel formats a stream can be offered in.
#pragma once

#include "codec/CodecInstance.h"
#include "codec/PixelFormatTables.h"

#include <cstdint>
#include <vector>

// The request that has the codec deliver a host pixel format.
QuorvaneFormat decodeRequest(const FormatInfo& info);

// The formats the codec can decode the stream into, in table order.
std::vector<FormatInfo> findDecodeFormats(CodecInstance& codec, const std::vector<std::uint8_t>& compressedFormat);

// Those of `formats` that the compressed type prefers, or all of them when it prefers none of these.
std::vector<FormatInfo> preferredFormats(const SubTypeInfo& subType, const std::vector<FormatInfo>& formats);
