#include "avirepair/System.h"

#include <windows.h>
// windows.h comes first
#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace avirepair {

void useUtf8Output() {
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
}

bool errorsGoToATerminal() { return _isatty(_fileno(stderr)) != 0; }

}  // namespace avirepair
