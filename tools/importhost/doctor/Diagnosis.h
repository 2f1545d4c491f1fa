// What is wrong with an installation, and what to do about it.
#pragma once

#include "importhost/doctor/Facts.h"

#include <string>
#include <vector>

namespace importhost::doctor {

// What there is to fix, each a short text that says what is wrong and what to do; empty when all is well.
// `programVersion`: of this program, to which a plug-in of the same package belongs.
std::vector<std::string> thingsToFix(const Facts& facts, const FileVersion& programVersion);

// The page for a report: the facts, then what there is to fix.
std::string pageOf(const Facts& facts, const std::string& programVersion, const std::vector<std::string>& toFix);

}  // namespace importhost::doctor
