// The asynchronous importers that the host has asked for.
#pragma once

#include "sdk/SdkImporter.h"

namespace hostprobe {

// Makes one and fills the record's answer. It outlives the file that it was made for, as hosts expect.
void createAsyncImporter(SPBasicSuite* basic, void* record);

bool isAnyAsyncImporterOpen();

// Gives back what importers still hold that the host forgot to close.
void dropAsyncImporters();

}  // namespace hostprobe
