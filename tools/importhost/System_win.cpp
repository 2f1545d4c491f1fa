#include "importhost/System.h"

#include "hostkit/Text.h"

#include <windows.h>

#include <io.h>
#include <shellapi.h>

#include <cstdio>

namespace importhost {

// The narrow arguments have lost every character outside the system's code page; the wide ones have not.
std::vector<std::string> argumentsOf(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        arguments.push_back(hostkit::toUtf8(std::filesystem::path(words[i])));
    }
    LocalFree(words);
    return arguments;
}

void useUtf8Output() { SetConsoleOutputCP(CP_UTF8); }

bool errorsGoToATerminal() { return _isatty(_fileno(stderr)) != 0; }

}  // namespace importhost
