// The "format" of a stream in a report: the fields of its record, by their own names, and the bytes behind it.
#pragma once

#include "avidump/Report.h"

namespace avidump {

/// Fields that a format too short for them does not have are zero. A sound's channel mask and sub-format are there for
/// the extensible format tag alone.
Report formatOf(const AviStream& stream);

}  // namespace avidump
