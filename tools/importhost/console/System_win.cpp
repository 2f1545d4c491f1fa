#include "importhost/console/System.h"

#include <windows.h>

#include <io.h>

#include <cstdio>

namespace importhost {

void useUtf8Output() { SetConsoleOutputCP(CP_UTF8); }

void failWithoutDialogs() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

void endWithParent() {}     // the parent's job sees to it

bool errorsGoToATerminal() { return _isatty(_fileno(stderr)) != 0; }

// No path holds a quotation mark here, and nothing else of ours does.
std::string shellWord(const std::string& word) {
    const bool isPlain = !word.empty() && word.find_first_of(" \t*?&|<>()[]{};!`#~^%$@,='") == std::string::npos;
    return isPlain ? word : "\"" + word + "\"";
}

}  // namespace importhost
