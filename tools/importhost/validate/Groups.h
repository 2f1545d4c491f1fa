// The groups of checks, each a file or a few in checks/, each a table of rows.
#pragma once

#include "importhost/validate/Check.h"

namespace importhost::validate {

std::span<const Check> libraryChecks();     // the file itself: exports, imports, loading
std::span<const Check> protocolChecks();    // which call is answered how

}  // namespace importhost::validate
