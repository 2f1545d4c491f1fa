// importhost and makeavi as child processes, from the folder of the test program.
#pragma once

#include "hostkit/ChildProcess.h"
#include "hostkit/PluginLibrary.h"
#include "hostkit/Text.h"
#include "hostkit/FakeClip.h"

#include <algorithm>

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

inline ProgramRun run(const std::string& fileName, const std::vector<std::string>& arguments) {
    const auto result = hostkit::runProgram(hostkit::PluginLibrary::programFolder() / fileName, arguments);
    EXPECT_FALSE(result.timedOut);
    return {result.exitCode, plainLines(result.output), plainLines(result.errors)};
}

inline ProgramRun importhost(const std::vector<std::string>& arguments) { return run(IMPORTHOST_FILE_NAME, arguments); }

// With the fake importer instead of the real one.
inline ProgramRun withFake(std::vector<std::string> arguments) {
    arguments.push_back("--plugin");
    arguments.push_back(hostkit::toUtf8(fakes::importerPath()));
    return importhost(arguments);
}

inline ProgramRun makeavi(const std::vector<std::string>& arguments) { return run(MAKEAVI_FILE_NAME, arguments); }

}  // namespace programs
