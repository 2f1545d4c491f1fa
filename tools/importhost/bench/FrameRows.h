// Measures a clip's pictures.
#pragma once

#include "importhost/bench/Measurement.h"
#include "importhost/clips/VideoClip.h"

namespace importhost::bench {

// Synchronous frames: linear, reverse and random.
void measureFrames(VideoClip& clip, ReadCounter& counter, const BenchOptions& options, FileMeasurement& file);

// Asynchronous frames, for a host that works between them.
void measureAhead(Editor& editor, VideoClip& clip, ReadCounter& counter, const BenchOptions& options,
                  FileMeasurement& file);

}  // namespace importhost::bench
