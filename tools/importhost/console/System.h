// What differs between systems for a command-line program.
#pragma once

#include <string>

namespace importhost {

// Makes the terminal show UTF-8.
void useUtf8Output();

bool errorsGoToATerminal();

// A fault ends the process at once, without a box that waits for a click. Children inherit that.
void failWithoutDialogs();

// Lets this process end when the one that started it does, however that ends.
void endWithParent();

// The word as the system's usual shell takes it unchanged, to paste.
std::string shellWord(const std::string& word);

}  // namespace importhost
