// Gathers the facts about this machine. Reads only: files, the registry, and a plug-in that is loaded to see whether
// it can be.
#pragma once

#include "importhost/doctor/Facts.h"

namespace importhost::doctor {

// `named`: a plug-in to examine instead of those where hosts look; empty: those, or on a system without the host
// `beside`.
Facts collectFacts(const std::filesystem::path& named, const std::filesystem::path& beside);

// Whether the log is on, where its files go and which is the newest there.
LogState logState(bool isOn, const std::filesystem::path& folder);

}  // namespace importhost::doctor
