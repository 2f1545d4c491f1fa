// Runs the built programs in the test program's folder as child processes.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/ChildProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace programs {

// A program's output, with the system's line ends replaced by line feeds.
struct ProgramRun {
    int exitCode;
    std::string output;
    std::string errors;
};

inline std::string plainLines(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

// A program that exceeds hostkit's time limit fails the test.
inline ProgramRun run(const std::string& fileName, const std::vector<std::string>& arguments) {
    const auto result = hostkit::runProgram(hostkit::PluginLibrary::programFolder() / fileName, arguments);
    EXPECT_FALSE(result.timedOut);
    // A negative code is minus the signal's number, or Windows' exception code.
    if (result.exitCode < 0 || (result.exitCode != 0 && result.output.empty() && result.errors.empty())) {
        ADD_FAILURE() << fileName << " died with status " << result.exitCode << '\n' << result.errors;
    }
    return {result.exitCode, plainLines(result.output), plainLines(result.errors)};
}

// The build defines the file's name.
inline ProgramRun runImporthost(const std::vector<std::string>& arguments) {
    return run(IMPORTHOST_FILE_NAME, arguments);
}

inline bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// Expects this exit code, and each of `parts` in the output, or in the errors.
inline void expectOutput(const ProgramRun& run, int exitCode, const std::vector<std::string>& parts = {}) {
    EXPECT_EQ(run.exitCode, exitCode) << run.output << run.errors;
    for (const std::string& part : parts) {
        EXPECT_TRUE(contains(run.output, part)) << "no '" << part << "' in " << run.output << run.errors;
    }
}

inline void expectErrors(const ProgramRun& run, int exitCode, const std::vector<std::string>& parts) {
    EXPECT_EQ(run.exitCode, exitCode) << run.output << run.errors;
    for (const std::string& part : parts) {
        EXPECT_TRUE(contains(run.errors, part)) << "no '" << part << "' in " << run.errors;
    }
}

}  // namespace programs
