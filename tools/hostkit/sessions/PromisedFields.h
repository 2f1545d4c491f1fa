// Which bytes of each record our importer may write. Everything else of a record is the host's.
#pragma once

#include "hostkit/sessions/RecordStorage.h"
#include "sdk/SdkImporter.h"

namespace hostkit {

// The part of `written` that lies outside the fields promised for this selector.
std::vector<ByteRange> beyondPromise(imSelector selector, const std::vector<ByteRange>& written);

}  // namespace hostkit
