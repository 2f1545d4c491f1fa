// System-specific functions of a command-line program.
#pragma once

#include <string>

namespace importhost {

// Makes the terminal show UTF-8.
void useUtf8Output();

bool errorsGoToATerminal();

// A crash ends the process at once, without a dialog. Inherited by child processes.
void failWithoutDialogs();

// Ends this process when its parent ends, however that happens.
void endWithParent();

// The word quoted for the system's usual shell.
std::string shellWord(const std::string& word);

}  // namespace importhost
