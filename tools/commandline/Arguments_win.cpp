#include "commandline/Arguments.h"

#include "text/Utf.h"

#include <windows.h>
// windows.h comes first
#include <shellapi.h>

// argv is in the system's code page, which cannot represent every file name.
std::vector<std::string> utf8Arguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    if (wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        for (int i = 1; i < count; ++i) {
            arguments.push_back(utf8FromUtf16(reinterpret_cast<const char16_t*>(wide[i])));
        }
        LocalFree(wide);
    }
    return arguments;
}
