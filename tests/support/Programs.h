// The built programs as child processes, from the folder of the test program.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/ChildProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace programs {

// What a program wrote, with the system's line ends made plain.
struct ProgramRun {
    int exitCode;
    std::string output;
    std::string errors;
};

inline std::string plainLines(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

// The time limit is hostkit's own; a program that runs into it fails the test.
inline ProgramRun run(const std::string& fileName, const std::vector<std::string>& arguments) {
    const auto result = hostkit::runProgram(hostkit::PluginLibrary::programFolder() / fileName, arguments);
    EXPECT_FALSE(result.timedOut);
    // Below 0: minus the signal's number, or Windows' exception code.
    if (result.exitCode < 0 || (result.exitCode != 0 && result.output.empty() && result.errors.empty())) {
        ADD_FAILURE() << fileName << " died with status " << result.exitCode << '\n' << result.errors;
    }
    return {result.exitCode, plainLines(result.output), plainLines(result.errors)};
}

// The test program's build says what the file is called.
inline ProgramRun runImporthost(const std::vector<std::string>& arguments) {
    return run(IMPORTHOST_FILE_NAME, arguments);
}

inline bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace programs
