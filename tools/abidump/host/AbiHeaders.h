// Includes what abidump describes: the host's own headers, in the folder QUORVANE_HOST_HEADERS.
//
// We never had these headers: a name below that is different in them fails to compile. Fix it here with an alias for
// our name, so that the tables and their text stay the same.
#pragma once

#include <SPBasic.h>
#include <SPErrorCodes.h>
#include <SPTypes.h>

#include <PrSDKAlphaTypes.h>
#include <PrSDKAsyncImporter.h>
#include <PrSDKAudioSuite.h>
#include <PrSDKClassData.h>
#include <PrSDKErrorSuite.h>
#include <PrSDKImageProcessingSuite.h>
#include <PrSDKImport.h>
#include <PrSDKImporterShared.h>
#include <PrSDKMALErrors.h>
#include <PrSDKPPixCacheSuite.h>
#include <PrSDKPPixCreatorSuite.h>
#include <PrSDKPPixSuite.h>
#include <PrSDKPixelFormat.h>
#include <PrSDKPlugMemory.h>
#include <PrSDKPlugSuites.h>
#include <PrSDKPlugUtilities.h>
#include <PrSDKTimeSuite.h>
#include <PrSDKTypes.h>

#include <cstdint>
#include <type_traits>

namespace abidump {

inline constexpr char kHeaders[] = "the host's headers";
inline constexpr std::int64_t kInterfaceVersion = IMPORTMOD_VERSION;

// The types of these records are deduced from the members that contain them, whatever their names in the host's
// headers.
using PlugMemoryFuncs = std::remove_pointer_t<decltype(piSuites::memFuncs)>;
using PlugUtilFuncs = std::remove_pointer_t<decltype(piSuites::utilFuncs)>;
using ClassDataFuncs = std::remove_pointer_t<decltype(imCallbackFuncs::classFuncs)>;
using matColRec = decltype(imImageInfoRec::matteColor);
using imAudioInfoRec7 = decltype(imFileInfoRec8::audInfo);
using imRenderContext = decltype(imSourceVideoRec::inRenderContext);

}  // namespace abidump
