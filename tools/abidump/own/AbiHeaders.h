// What abidump describes: our own words for the host's interface. The other file of this name, in the folder "host",
// takes the host's headers instead; CMake chooses.
#pragma once

#include "sdk/SdkAsyncImporter.h"

namespace abidump {

inline constexpr char kHeaders[] = "the importer's own headers";
inline constexpr std::int64_t kInterfaceVersion = IMPORTMOD_VERSION_18;

}  // namespace abidump
