// Measures a file's sound.
#pragma once

#include "importhost/bench/Measurement.h"

namespace importhost::bench {

// Measures each stream with sound in blocks of kSoundBlock sample frames. Failures of streams are added to the file's
// failures.
void measureSound(Editor& editor, ReadCounter& counter, FileMeasurement& file);

}  // namespace importhost::bench
