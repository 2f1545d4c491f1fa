// Frames announced and collected by one thread: which answer, which picture.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

void asyncEqualsSync(CheckRun& run);
void asyncOrders(CheckRun& run);
void asyncDuplicates(CheckRun& run);
void asyncUnannounced(CheckRun& run);
void asyncDroppedFrames(CheckRun& run);
void asyncCancel(CheckRun& run);
void asyncUnknownSelectors(CheckRun& run);
void asyncOutOfRange(CheckRun& run);
void asyncCrowds(CheckRun& run);

}  // namespace importhost::validate
