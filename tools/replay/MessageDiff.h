// Compares the plug-in's messages for a call then and now.
#pragma once

#include "replay/LogReader.h"

namespace replay {

struct MessageDiff {
    std::vector<std::string> gone;          // logged then, not now
    std::vector<std::string> added;         // logged now, not then
    std::vector<std::string> lines;         // both in order, prefixed with "- " and "+ "

    bool isEmpty() const { return lines.empty(); }
};

// A message without what always differs between runs: addresses, and the folder of the file.
std::string comparable(const std::string& message);

// Both calls must be complete. If `decodeIsWhole`, so are their background decodes; otherwise those are compared as far
// as they were logged then. Messages about decode sessions are then ignored, because whichever decode comes first logs
// them.
MessageDiff compareMessages(const LoggedCall& then, const LoggedCall& now, bool decodeIsWhole);

}  // namespace replay
