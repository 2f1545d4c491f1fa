// Measures what a host waits for before it shows a clip's first frame.
#pragma once

#include "importhost/bench/Measurement.h"

namespace importhost::bench {

// Opens and describes the clip kOpenings times, and each time requests its first frame in the first format offered.
// Throws ClipFailure for a clip that is unusable or has no pictures.
void measureOpening(Editor& editor, ReadCounter& counter, FileMeasurement& file);

}  // namespace importhost::bench
