// Comparing what the plug-in logged for a call then and now.
#pragma once

#include "replay/LogReader.h"

namespace replay {

struct MessageDiff {
    std::vector<std::string> gone;          // logged then, not now
    std::vector<std::string> added;         // logged now, not then
    std::vector<std::string> lines;         // both in order, with "- " and "+ " before them

    bool isEmpty() const { return lines.empty(); }
};

// A message without what differs between runs by nature: addresses, and the folder that the file lay in.
std::string comparable(const std::string& message);

// Both calls must have come to their end. `decodeIsWhole`: so did what they started in the background; else it is
// compared as far as it was logged then. Messages on decode sessions are left out there: whichever decode comes first
// logs them.
MessageDiff compareMessages(const LoggedCall& then, const LoggedCall& now, bool decodeIsWhole);

}  // namespace replay
