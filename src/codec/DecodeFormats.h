// What a stream is to the codec, and which host pixel formats it can be offered in. The three that give a host result
// log what is wrong.
#pragma once

#include "codec/CodecInstance.h"
#include "codec/PixelFormatTables.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <vector>

// The request that has the codec deliver a host pixel format.
QuorvaneFormat decodeRequest(const FormatInfo& info);

// Asks the codec what the stream is: imBadFile when it does not know.
csSDK_int32 queryStream(CodecInstance& codec, const std::vector<std::uint8_t>& compressedFormat,
                        QuorvaneFormat& format);

// Looks a compressed type up: imOtherErr when the tables do not know it.
csSDK_int32 findSubType(std::uint32_t type, SubTypeInfo& subType);

// The formats the codec can decode the stream into, in table order: those that its compressed type prefers, or all of
// them when it prefers none of these. imBadFile when there are none, and as the two above.
csSDK_int32 findDecodeFormats(const std::vector<std::uint8_t>& compressedFormat, std::vector<FormatInfo>& formats);
