// The "format" of a stream in a report: the fields of its record, by their own names, and the bytes after it.
#pragma once

#include "avidump/Report.h"

namespace avidump {

// Fields missing from a short format are zero. The channel mask and sub-format of a sound are only included for the
// extensible format tag.
Report formatOf(const AviStream& stream);

}  // namespace avidump
