#include "importhost/console/System.h"

#include <windows.h>

#include <io.h>

#include <cstdio>

namespace importhost {

void useUtf8Output() { SetConsoleOutputCP(CP_UTF8); }

void failWithoutDialogs() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

void endWithParent() {}     // done by the parent's job object

bool errorsGoToATerminal() { return _isatty(_fileno(stderr)) != 0; }

// Neither paths nor our own arguments contain quotation marks.
std::string shellWord(const std::string& word) {
    const bool isPlain = !word.empty() && word.find_first_of(" \t*?&|<>()[]{};!`#~^%$@,='") == std::string::npos;
    return isPlain ? word : "\"" + word + "\"";
}

}  // namespace importhost
