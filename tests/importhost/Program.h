// importhost with the fake importer, and makeavi.
#pragma once

#include "hostkit/FakeClip.h"
#include "hostkit/system/Text.h"
#include "support/Programs.h"

namespace programs {

// With the fake importer instead of the real one.
inline ProgramRun withFake(std::vector<std::string> arguments) {
    arguments.push_back("--plugin");
    arguments.push_back(hostkit::toUtf8(fakes::importerPath()));
    return runImporthost(arguments);
}

inline ProgramRun makeavi(const std::vector<std::string>& arguments) { return run(MAKEAVI_FILE_NAME, arguments); }

}  // namespace programs
