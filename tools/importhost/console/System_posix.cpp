#include "importhost/console/System.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>

namespace importhost {

void useUtf8Output() {}

void failWithoutDialogs() {}

void endWithParent() { prctl(PR_SET_PDEATHSIG, SIGKILL); }

bool errorsGoToATerminal() { return isatty(STDERR_FILENO) != 0; }

std::string shellWord(const std::string& word) {
    const bool isPlain = !word.empty() && word.find_first_of(" \t\r\n\"'*?$&|<>()[]{};!`#~^\\") == std::string::npos;
    if (isPlain) {
        return word;
    }
    std::string quoted = "'";
    for (const char character : word) {
        quoted += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return quoted + "'";
}

}  // namespace importhost
