// Running a program to its end, with what it wrote.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace hostkit {

struct ChildResult {
    int exitCode = 0;           // a program that crashed: the system's exception code, or minus the signal's number
    bool timedOut = false;      // it was ended from here
    std::string output;         // standard output as it was written, line ends included
    std::string errors;         // standard error likewise
};

// Runs `program` with UTF-8 arguments that reach it unchanged, in the present folder and with the present
// environment, without input. Throws std::runtime_error when it cannot be started, and Interrupted, with the program
// ended, after an interrupt (see Interrupt.h). On Windows it ends with this process at the latest. Safe on any thread.
ChildResult runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                       std::chrono::seconds timeLimit = std::chrono::seconds(120));

}  // namespace hostkit
