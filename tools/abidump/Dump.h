// Prints the tables as text, and compares two such texts.
#pragma once

#include <string>

namespace abidump {

// One fact per line, the same lines in the same order for any headers: only what follows a name can differ.
std::string dumpText();

// The lines of `wanted` that differ in `found`, as pairs: "- " wanted, "+ " found. Empty if the texts agree, except for
// the first line, which names the headers, and line ends.
std::string differences(const std::string& wanted, const std::string& found);

}  // namespace abidump
