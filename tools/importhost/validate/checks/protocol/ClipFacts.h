// All that a plug-in tells about a clip, as lines of text that can be compared and shown.
#pragma once

#include "importhost/validate/checks/stage/OpenClip.h"
#include "importhost/validate/checks/stage/OwnSample.h"

#include <string>
#include <vector>

namespace importhost::validate {

using Facts = std::vector<std::string>;     // "frame size: 48 x 32"

// One answer to imGetInfo8: its result, and the fields that the importer fills.
Facts streamFacts(const hostkit::Answer<imFileInfoRec8>& answer);

// Asks for stream 0 and for all that goes with it: pixel formats, channel layout, analysis text, data rates, the first
// and the last frame, the first sound.
Facts clipFacts(OpenClip& clip);

// Fails with the first line that differs.
bool expectSame(CheckRun& run, const std::string& when, const Facts& found, const Facts& wanted);

// A checksum of bytes, the same on every system.
std::string sumOf(const void* bytes, std::size_t size);

// A new copy of the first sample in the check's folder.
Clip ownClip(const CheckRun& run, const std::filesystem::path& name);

}  // namespace importhost::validate
