#include "commandline/Arguments.h"

#include <windows.h>
// windows.h comes first
#include <shellapi.h>

namespace {

std::string utf8(const wchar_t* wide) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) {
        return {};
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
    text.pop_back();   // the terminator
    return text;
}

}  // namespace

// argv is in the system's code page, which cannot represent every file name.
std::vector<std::string> utf8Arguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    if (wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        for (int i = 1; i < count; ++i) {
            arguments.push_back(utf8(wide[i]));
        }
        LocalFree(wide);
    }
    return arguments;
}
