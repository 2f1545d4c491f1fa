// Shared by all parts of the program: its version and exit codes.
#pragma once

#include <stdexcept>
#include <string_view>

namespace importhost {

enum ExitCode {
    kGood = 0,
    kFailed = 1,            // the plug-in or a file failed, or something was not released
    kUsage = 2,
    kNotLoaded = 3,
};

// An invalid argument that was only found after opening what it names.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string_view programVersion();      // "1.0.0"

}  // namespace importhost
