// `importhost validate`, with the real plug-in or a wrong one.
#pragma once

#include "hostkit/system/Text.h"
#include "support/Environment.h"
#include "support/Programs.h"

namespace programs {

inline ProgramRun validate(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "validate");
    return runImporthost(arguments);
}

// The fault applies to this run only.
inline ProgramRun validateWrong(const std::string& fault, std::vector<std::string> arguments) {
    const EnvironmentVariable chosen("WRONG_PLUGIN", fault);
    const auto plugin = hostkit::PluginLibrary::programFolder() / ("WrongPlugin" WRONG_PLUGIN_SUFFIX);
    arguments.insert(arguments.begin(), {"--plugin", hostkit::toUtf8(plugin)});
    return validate(std::move(arguments));
}

// Returns the text from the first `start` to the end of its line.
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
