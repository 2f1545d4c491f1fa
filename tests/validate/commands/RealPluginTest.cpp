// The real plug-in passes every check.
#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/ChildProcess.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// Only Windows libraries have resources; no other check may be skipped.
constexpr bool kHasResources = std::string_view(WRONG_PLUGIN_SUFFIX) == ".prm";

std::string skippedChecks(const std::string& output) {
    std::istringstream lines(output);
    std::string ids;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("skip ")) {
            std::string id;
            std::istringstream(line.substr(5)) >> id;
            ids.append(id).append(" ");
        }
    }
    return ids;
}

TEST(RealPlugin, PassesEveryCheckAtTheHighestLevel) {
    const hostkit::ChildResult result =
        hostkit::runProgram(hostkit::PluginLibrary::programFolder() / IMPORTHOST_FILE_NAME,
                            {"validate", "--level", "10"}, std::chrono::seconds(600));
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
    EXPECT_EQ(skippedChecks(result.output), kHasResources ? "" : "library-resource ") << result.output;
}

}  // namespace
