#include "importhost/System.h"

#include <windows.h>

#include <io.h>

#include <cstdio>

namespace importhost {

void useUtf8Output() { SetConsoleOutputCP(CP_UTF8); }

bool errorsGoToATerminal() { return _isatty(_fileno(stderr)) != 0; }

}  // namespace importhost
