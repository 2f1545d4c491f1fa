// The measured rows of a file's sound.
#pragma once

#include "importhost/bench/Measurement.h"

namespace importhost::bench {

// Each stream that has sound, in blocks of kSoundBlock sample frames. Streams that fail are told in the file's
// failures.
void measureSound(Editor& editor, ReadCounter& counter, FileMeasurement& file);

}  // namespace importhost::bench
