// The groups of checks, each a file or a few in checks/, each a table of rows.
#pragma once

#include "importhost/validate/framework/Check.h"

namespace importhost::validate {

std::span<const Check> libraryChecks();         // the file itself: exports, imports, loading
std::span<const Check> protocolChecks();        // which call is answered how
std::span<const Check> frameChecks();           // pictures, one at a time
std::span<const Check> audioChecks();           // sound
std::span<const Check> asyncChecks();           // pictures announced ahead
std::span<const Check> refusingHostChecks();    // a host that refuses suites, memory, frames
std::span<const Check> codecChecks();           // a codec library that fails
std::span<const Check> diskChecks();            // a disk that fails
std::span<const Check> exceptionChecks();       // a host that throws
std::span<const Check> stateChecks();           // random calls that a legal host could send
std::span<const Check> measureChecks();         // slow or growing: warnings only

}  // namespace importhost::validate
