#include "importhost/validate/run/Result.h"

#include <cstring>

namespace importhost::validate {

std::string exitText(int exitCode) {
    if (exitCode >= 0) {
        return "exit code " + std::to_string(exitCode);
    }
    return std::string(strsignal(-exitCode)) + " (signal " + std::to_string(-exitCode) + ")";
}

}  // namespace importhost::validate
