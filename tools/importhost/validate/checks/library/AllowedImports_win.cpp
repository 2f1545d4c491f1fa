#include "importhost/validate/checks/library/AllowedImports.h"

namespace importhost::validate {

namespace {

// No compiler's runtime that has to be installed, and nothing for networks: an editor's plug-ins keep to files.
constexpr std::string_view kAllowed[] = {
    "quorvane_common64.dll",
    "kernel32.dll", "ntdll.dll", "msvcrt.dll", "ucrtbase.dll", "api-ms-win-*",
    "advapi32.dll", "user32.dll", "gdi32.dll", "shell32.dll", "shlwapi.dll", "ole32.dll", "oleaut32.dll",
    "rpcrt4.dll", "version.dll", "bcrypt.dll",
};

}  // namespace

std::span<const std::string_view> allowedImports() { return kAllowed; }

}  // namespace importhost::validate
