// What a clip's sound is where the plug-in does not take it; the plug-in's answers do not tell.
#pragma once

#include "sdk/SdkTypes.h"

#include <filesystem>
#include <string>

namespace importhost {

// "'a.avi' has no sound in stream 0.", or what it has there that the plug-in cannot use. Streams count as the editor
// counts them.
std::string noSoundText(const std::filesystem::path& path, csSDK_int32 stream);

}  // namespace importhost
