// Includes what abidump describes: our own definition of the host's interface. The file of the same name in the folder
// "host" uses the host's headers instead; CMake chooses.
#pragma once

#include "sdk/SdkAsyncImporter.h"

namespace abidump {

inline constexpr char kHeaders[] = "the importer's own headers";
inline constexpr std::int64_t kInterfaceVersion = IMPORTMOD_VERSION_18;

}  // namespace abidump
