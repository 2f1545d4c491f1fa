// The checks of the library group, for its table.
#pragma once

#include "importhost/validate/framework/CheckRun.h"

namespace importhost::validate {

void libraryExports(CheckRun& run);
void libraryImports(CheckRun& run);
void libraryResource(CheckRun& run);

void libraryLoads(CheckRun& run);
void libraryLoadIsQuiet(CheckRun& run);
void libraryComesAndGoes(CheckRun& run);

void unknownSelectors(CheckRun& run);
void unhandledSelectors(CheckRun& run);

void logStaysOff(CheckRun& run);
void logOfLoadAndUnload(CheckRun& run);

}  // namespace importhost::validate
