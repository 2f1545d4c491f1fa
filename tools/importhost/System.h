// What differs between systems for a command-line program.
#pragma once

#include <string>
#include <vector>

namespace importhost {

// The arguments after the program's name, in UTF-8.
std::vector<std::string> argumentsOf(int argc, char** argv);

// Makes the terminal show UTF-8.
void useUtf8Output();

bool errorsGoToATerminal();

}  // namespace importhost
