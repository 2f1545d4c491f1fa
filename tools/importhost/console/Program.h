// What every part of the program knows of it: its version and how it ends.
#pragma once

#include <stdexcept>
#include <string_view>

namespace importhost {

enum ExitCode {
    kGood = 0,
    kFailed = 1,            // the plug-in or a file failed, or something was left uneven
    kUsage = 2,
    kNotLoaded = 3,
};

// The arguments do not fit what they name; found only after it was opened.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string_view programVersion();      // "1.0.0"

}  // namespace importhost
