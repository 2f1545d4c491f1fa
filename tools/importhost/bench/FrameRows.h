// The measured rows of a clip's pictures.
#pragma once

#include "importhost/bench/Measurement.h"
#include "importhost/clips/VideoClip.h"

namespace importhost::bench {

// Linear, reverse and random frames, each waited for.
void measureFrames(VideoClip& clip, ReadCounter& counter, const BenchOptions& options, FileMeasurement& file);

// Frames announced ahead, for a host that works between them.
void measureAhead(Editor& editor, VideoClip& clip, ReadCounter& counter, const BenchOptions& options,
                  FileMeasurement& file);

}  // namespace importhost::bench
