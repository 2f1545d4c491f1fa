// The real plug-in passes every check.
#include "hostkit/ChildProcess.h"
#include "hostkit/PluginLibrary.h"

#include <gtest/gtest.h>

namespace {

TEST(RealPlugin, PassesEveryCheckAtTheHighestLevel) {
    const hostkit::ChildResult result =
        hostkit::runProgram(hostkit::PluginLibrary::programFolder() / IMPORTHOST_FILE_NAME,
                            {"validate", "--level", "10"}, std::chrono::seconds(600));
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
    EXPECT_EQ(result.output.find("\nskip"), std::string::npos) << result.output;
}

}  // namespace
