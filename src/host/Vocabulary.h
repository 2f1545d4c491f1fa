// Names of host codes for the log: the host's own identifiers exactly, including one misspelling. Each function returns
// a static text, never null; "????" for an unknown code. Pure and thread-safe.
#pragma once

#include "sdk/SdkTypes.h"

const char* SelectorName(csSDK_int32 selector);
const char* ErrorName(csSDK_int32 result);
const char* AsyncSelectorName(csSDK_int32 selector);
const char* AsyncErrorName(csSDK_int32 result);
const char* PixelFormatName(csSDK_uint32 pixelFormat);

// Unlike the others, returns "Unknown_Channel_Label" for an unknown label.
const char* ChannelLabelName(csSDK_int32 label);
