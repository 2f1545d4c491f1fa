// The checks of the disk group, by topic.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

// DiskFailures.cpp
void diskReadFails(CheckRun& run);
void diskReadFallsShort(CheckRun& run);
void diskSeekFails(CheckRun& run);
void diskSizeFails(CheckRun& run);
void diskOpenFails(CheckRun& run);
void diskGoneForGood(CheckRun& run);

// ChangedFiles.cpp
void fileShrinksWhileOpen(CheckRun& run);
void fileVanishesWhileOpen(CheckRun& run);
void fileChangesWhileQuiet(CheckRun& run);

}  // namespace importhost::validate
