// Tries out all suites that an importer uses.
#pragma once

#include "sdk/SdkSuites.h"

namespace hostprobe {

// Acquires each suite twice, uses it, and releases it twice.
void checkSuites(SPBasicSuite* basic);

// Returns the ticks per second, which may not change in the life of a host, or 0 if the suite fails.
PrTime askTicksPerSecond(const PrSDKTimeSuite& time);

// The parts of checkSuites(), each for a table that is complete.
void checkTimeSuite(const PrSDKTimeSuite& time);
void checkImageSuite(const PrSDKImageProcessingSuite& image);
void checkErrorSuite(const PrSDKErrorSuite3& error);
void checkAudioSuite(const PrSDKAudioSuite& audio);

// Frames are compared with the sizes that `image` returns, unless it is null.
void checkFrameSuites(const PrSDKPPixCreatorSuite& creator, const PrSDKPPixSuite& frames,
                      const PrSDKImageProcessingSuite* image);

}  // namespace hostprobe
