// The guard around the plug-in's calls: what it tells, to whom, and what it lets pass.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

void undescribedClips(CheckRun& run);           // requests that the plug-in itself answers with an exception
void exceptionTexts(CheckRun& run);
void exceptionsOutsideTheStart(CheckRun& run);  // before the plug-in was started and after it was shut down
void unreportableExceptions(CheckRun& run);
void foreignExceptions(CheckRun& run);          // such as derive from no standard one

}  // namespace importhost::validate
