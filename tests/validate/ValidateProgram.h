// `importhost validate` as a child process, with the real plug-in or a wrong one.
#pragma once

#include "hostkit/ChildProcess.h"
#include "hostkit/PluginLibrary.h"
#include "hostkit/Text.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace programs {

struct ProgramRun {
    int exitCode;
    std::string output;
    std::string errors;
};

// The system's line ends made plain.
inline std::string plainLines(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

inline ProgramRun runImporthost(const std::vector<std::string>& arguments) {
    const auto result =
        hostkit::runProgram(hostkit::PluginLibrary::programFolder() / IMPORTHOST_FILE_NAME, arguments);
    EXPECT_FALSE(result.timedOut);
    return {result.exitCode, plainLines(result.output), plainLines(result.errors)};
}

inline ProgramRun validate(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "validate");
    return runImporthost(arguments);
}

// The fault is in force for this run alone.
inline ProgramRun validateWrong(const std::string& fault, std::vector<std::string> arguments) {
    const EnvironmentVariable chosen("WRONG_PLUGIN", fault);
    const auto plugin = hostkit::PluginLibrary::programFolder() / ("WrongPlugin" WRONG_PLUGIN_SUFFIX);
    arguments.insert(arguments.begin(), {"--plugin", hostkit::toUtf8(plugin)});
    return validate(std::move(arguments));
}

inline bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// What stands between `start` and the end of that line, where `start` is found first.
inline std::string restOfLine(const std::string& text, const std::string& start) {
    const std::size_t at = text.find(start);
    if (at == std::string::npos) {
        ADD_FAILURE() << "no '" << start << "' in " << text;
        return {};
    }
    const std::size_t from = at + start.size();
    return text.substr(from, text.find('\n', from) - from);
}

}  // namespace programs
