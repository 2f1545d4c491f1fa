// What differs between systems for a command-line program.
#pragma once

#include <string>

namespace importhost {

// Makes the terminal show UTF-8.
void useUtf8Output();

bool errorsGoToATerminal();

// The word as the system's usual shell takes it unchanged, to paste.
std::string shellWord(const std::string& word);

}  // namespace importhost
