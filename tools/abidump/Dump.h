// The tables as text, and two such texts compared.
#pragma once

#include <string>

namespace abidump {

// One line a fact, the same lines in the same order from any headers: what follows a name is all that can differ.
std::string dumpText();

// Lines of `wanted` that `found` has otherwise, one below the other: "- " as wanted, "+ " as found. Empty when the
// texts agree, but for the first line, which names the headers, and for the system's line ends.
std::string differences(const std::string& wanted, const std::string& found);

}  // namespace abidump
