// A check: one named demand on a plug-in. A new one is a function and a row in the table of its group.
#pragma once

#include <chrono>
#include <span>
#include <string>
#include <string_view>

namespace importhost::validate {

class CheckRun;

// Whether a check may run while others do. One that turns a switch of the whole user account, or looks at a folder
// that all share, must be alone.
enum class Company { Shared, Alone };

inline constexpr std::chrono::seconds kUsualTimeLimit{60};

struct Check {
    std::string_view id;            // kebab-case, for ever: users and scripts name it
    int level = 1;                  // the lowest level, of 1 to 10, that runs it
    std::string_view description;   // one paragraph: what is asked of the plug-in, and what an editor sees otherwise
    void (*run)(CheckRun& run) = nullptr;
    Company company = Company::Shared;
    std::chrono::seconds timeLimit = kUsualTimeLimit;
};

inline constexpr int kLowestLevel = 1;
inline constexpr int kUsualLevel = 5;
inline constexpr int kHighestLevel = 10;

struct CheckGroup {
    std::string_view name;          // "library"
    std::span<const Check> checks;
};

}  // namespace importhost::validate
