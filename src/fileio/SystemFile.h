// The File implementation of the system this build is for; the only place that chooses.
#pragma once

#ifdef _WIN32
#include "fileio/WinFile.h"
#else
#include "fileio/PosixFile.h"
#endif

namespace fileio {

#ifdef _WIN32
using SystemFile = WinFile;
#else
using SystemFile = PosixFile;
#endif

}  // namespace fileio
