// Frames announced and collected by several threads, and the end of an importer while others are busy.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

void asyncSeveralImporters(CheckRun& run);
void asyncThreads(CheckRun& run);
void asyncFirstTouch(CheckRun& run);
void asyncAnnouncingDoesNotWait(CheckRun& run);
void asyncFlushWaits(CheckRun& run);
void asyncCloseWaits(CheckRun& run);
void asyncOutlivesItsClip(CheckRun& run);
void asyncUnloads(CheckRun& run);

}  // namespace importhost::validate
