// What avirepair needs of the system beyond files.
#pragma once

namespace avirepair {

// Makes standard output take bytes as they are, and a terminal show UTF-8.
void useUtf8Output();

bool errorsGoToATerminal();

}  // namespace avirepair
