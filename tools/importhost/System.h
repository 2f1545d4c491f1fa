// What differs between systems for a command-line program.
#pragma once

namespace importhost {

// Makes the terminal show UTF-8.
void useUtf8Output();

bool errorsGoToATerminal();

}  // namespace importhost
