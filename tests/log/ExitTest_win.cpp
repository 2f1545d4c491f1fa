// A process that exits while its threads write the log: the system ends the threads wherever they are, then notifies
// the plug-in.
#include "log/PluginRun.h"

#include "hostkit/system/ChildProcess.h"

#include <gtest/gtest.h>

namespace {

TEST(LogAtExit, NeverWaitsForTerminatedThreads) {
    const ProfileSandbox sandbox;
    const hostkit::LogSwitch on(true);
    for (int run = 0; run < 20; ++run) {
        const auto program = hostkit::PluginLibrary::programFolder() / "log_exit_program.exe";
        const hostkit::ChildResult result = hostkit::runProgram(program, {}, std::chrono::seconds(20));
        ASSERT_FALSE(result.timedOut) << "run " << run;
        ASSERT_EQ(result.exitCode, 0) << "run " << run;
    }
    EXPECT_TRUE(std::filesystem::exists(sandbox.logFolder())) << "no log was written";
}

}  // namespace
