// A host's call to a plug-in in words: the selector and what the host asks for. For traces, so never fast.
#pragma once

#include "sdk/SdkTypes.h"

#include <string>

namespace hostkit {

// "imGetSourceVideo(time 0, 720 x 480 BGRA)"; a selector without parameters that tell anything has empty brackets.
// The parameters must be those that the host is about to send with this selector.
std::string callText(csSDK_int32 selector, const void* param1, const void* param2);
std::string asyncCallText(csSDK_int32 selector, const void* parameter);

}  // namespace hostkit
