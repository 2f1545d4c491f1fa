// Tries out all suites that an importer uses.
#pragma once

#include "sdk/SdkSuites.h"

namespace hostprobe {

// Acquires each suite twice, uses it, and releases it twice.
void checkSuites(SPBasicSuite* basic);

// Ticks per second may not change in the life of a host; 0 when the suite does not tell.
PrTime askTicksPerSecond(const PrSDKTimeSuite& time);

// The parts of checkSuites(), each for a table that is complete.
void checkTimeSuite(const PrSDKTimeSuite& time);
void checkImageSuite(const PrSDKImageProcessingSuite& image);
void checkErrorSuite(const PrSDKErrorSuite3& error);
void checkAudioSuite(const PrSDKAudioSuite& audio);

// `image` may be null: then frames are not compared with what it says of their sizes.
void checkFrameSuites(const PrSDKPPixCreatorSuite& creator, const PrSDKPPixSuite& frames,
                      const PrSDKImageProcessingSuite* image);

}  // namespace hostprobe
