// Names of the host's codes, for people.
#pragma once

#include "sdk/SdkImporter.h"

#include <string>
#include <string_view>

namespace hostkit {

// "imBadFile (2)"; for a value without a name "unknown (77)". An exception that left the plug-in has its own text.
std::string resultText(csSDK_int32 result);

std::string_view selectorName(csSDK_int32 selector);        // "imOpenFile8"; "unknown"
std::string_view asyncSelectorName(csSDK_int32 selector);   // "aiGetFrame"; "unknown"
std::string_view resultName(csSDK_int32 result);            // "unknown" for a value without a name
std::string_view channelLabelName(csSDK_int32 label);       // "FrontLeft"; "unknown"
std::string_view sampleTypeName(csSDK_int32 type);          // "16-bit integer"; "unknown"
std::string_view fieldTypeName(csSDK_int32 type);           // "progressive"; "unknown"
std::string_view alphaTypeName(csSDK_int32 type);           // "no alpha"; "unknown"

}  // namespace hostkit
