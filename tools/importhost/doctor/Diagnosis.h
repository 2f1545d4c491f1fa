// What is wrong with an installation, and what to do about it.
#pragma once

#include "importhost/doctor/Facts.h"

#include <string>
#include <vector>

namespace importhost::doctor {

// What to fix, each a short text that says what is wrong and what to do; empty if everything is correct.
// `programVersion` is the version of this program, which the plug-in should have too.
std::vector<std::string> thingsToFix(const Facts& facts, const FileVersion& programVersion);

// The page for a report: the facts, then what to fix.
std::string pageOf(const Facts& facts, const std::string& programVersion, const std::vector<std::string>& toFix);

}  // namespace importhost::doctor
