// Collects the facts about this machine. Read-only: it reads files and the registry, and loads a plug-in to see whether
// that works.
#pragma once

#include "importhost/doctor/Facts.h"

namespace importhost::doctor {

// `named`: a plug-in to examine instead of those where hosts look; if empty, those, or `own` on a system without the
// host.
Facts collectFacts(const std::filesystem::path& named, const std::filesystem::path& own);

// Whether the log is on, the folder of its files and the newest one.
LogState logState(bool isOn, const std::filesystem::path& folder);

}  // namespace importhost::doctor
