// Describes a clip's sound that the plug-in does not support; the plug-in's results do not.
#pragma once

#include "sdk/SdkTypes.h"

#include <filesystem>
#include <string>

namespace importhost {

// "'a.avi' has no sound in stream 0.", or the unsupported format of that stream. Streams are counted like in the
// editor.
std::string noSoundText(const std::filesystem::path& path, csSDK_int32 stream);

}  // namespace importhost
