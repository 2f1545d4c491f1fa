// The checks of the codec group, by topic.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

// CodecFailures.cpp
void codecGivenBack(CheckRun& run);
void codecFailsForGood(CheckRun& run);
void codecFailsOnce(CheckRun& run);
void codecFailsWhileLogging(CheckRun& run);

// CodecAnswers.cpp
void codecTellsUnknownType(CheckRun& run);
void codecTellsOtherSizes(CheckRun& run);

// SlowCodec.cpp
void codecIsSlow(CheckRun& run);

}  // namespace importhost::validate
