// One call of a log, ready to be repeated.
#pragma once

#include "sdk/SdkTypes.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace replay {

struct Step {
    std::string text;                           // "imGetInfo8 clip.avi, stream 0"
    std::vector<std::string> assumed;           // arguments missing from the log
    std::optional<std::string> skipped;         // why it cannot be made; then `run` is empty
    std::function<csSDK_int32()> run;           // makes the call, once, and returns its result
};

inline Step skippedStep(std::string text, std::string reason) {
    return {std::move(text), {}, std::move(reason), {}};
}

// The log ends within the call, before its arguments.
inline constexpr char kNotTold[] = "the log does not tell its arguments";

}  // namespace replay
