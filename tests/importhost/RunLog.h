// The plug-in's log of one run with --log, removed from where the plug-in wrote it.
#pragma once

#include "importhost/Program.h"

namespace programs {

inline std::string logOf(const ProgramRun& run) {
    const std::size_t at = run.errors.find("log: ");
    if (at == std::string::npos) {
        ADD_FAILURE() << run.errors;
        return {};
    }
    const auto file = hostkit::pathFromUtf8(run.errors.substr(at + 5, run.errors.find('\n', at) - at - 5));
    std::ifstream in(file, std::ios::binary);
    std::string log{std::istreambuf_iterator<char>(in), {}};
    in.close();
    std::filesystem::remove(file);
    return log;
}

}  // namespace programs
