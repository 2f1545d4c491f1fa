#include "importhost/System.h"

#include <unistd.h>

namespace importhost {

std::vector<std::string> argumentsOf(int argc, char** argv) { return {argv + 1, argv + argc}; }

void useUtf8Output() {}

bool errorsGoToATerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace importhost
