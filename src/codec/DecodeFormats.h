// What a stream is to the codec, and which host pixel formats it can be offered in. The functions that return a host
// result log errors.
#pragma once

#include "codec/CodecInstance.h"
#include "codec/PixelFormatTables.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <vector>

// The codec request that delivers the host pixel format `info`.
QuorvaneFormat decodeRequest(const FormatInfo& info);

// Asks the codec to describe the stream. Returns imBadFile if it cannot.
csSDK_int32 queryStream(CodecInstance& codec, const std::vector<std::uint8_t>& compressedFormat,
                        QuorvaneFormat& format);

// Looks up a compressed type. Returns imOtherErr if it is not in the tables.
csSDK_int32 findSubType(std::uint32_t type, SubTypeInfo& subType);

// Finds the formats the codec can decode the stream into, in table order: those that its compressed type prefers, or
// all if none of these is preferred. Returns imBadFile if there are none, and the errors of the two functions above.
csSDK_int32 findDecodeFormats(const std::vector<std::uint8_t>& compressedFormat, std::vector<FormatInfo>& formats);
