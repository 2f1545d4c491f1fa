// A sample of the stand-in codec beside its results, removed with them when the test ends.
#pragma once

#include "importhost/Program.h"

namespace programs {

class Sample : public fakes::TemporaryFile {
public:
    explicit Sample(std::vector<std::string> arguments) : TemporaryFile(u8"sample.avi", "") {
        arguments.push_back("-o");
        arguments.push_back(text());
        const ProgramRun made = makeavi(arguments);
        EXPECT_EQ(made.exitCode, 0) << made.errors;
    }
    std::string text() const { return hostkit::toUtf8(path()); }
    std::filesystem::path beside(const char* name) const { return path().parent_path() / name; }
};

}  // namespace programs
