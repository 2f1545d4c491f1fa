// The asynchronous importers that the host has created.
#pragma once

#include "sdk/SdkImporter.h"

namespace hostprobe {

// Creates one and fills the record. It outlives the file that it was created for, as hosts expect.
void createAsyncImporter(SPBasicSuite* basic, void* record);

bool isAnyAsyncImporterOpen();

// Releases what importers still hold that the host forgot to close.
void dropAsyncImporters();

}  // namespace hostprobe
