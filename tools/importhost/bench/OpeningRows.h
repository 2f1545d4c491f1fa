// What a host waits for before it shows a clip's first frame.
#pragma once

#include "importhost/bench/Measurement.h"

namespace importhost::bench {

// Opens and describes the clip kOpenings times, and asks each time for its first frame in the format that is offered
// first. Throws ClipFailure for a clip that cannot be used or has no pictures.
void measureOpening(Editor& editor, ReadCounter& counter, FileMeasurement& file);

}  // namespace importhost::bench
