// Paths that are not files, which only POSIX systems have.
#include "avidump/AvidumpProgram.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

TEST(AvidumpProgram, DoesNotWaitForAPipe) {
    const TempFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    const hostkit::ChildResult run = avidumpOf(folder.path("pipe"));
    EXPECT_FALSE(run.timedOut);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "avidump: " + folder.path("pipe") + ": cannot be opened: it is not a regular file\n");
}

// A loop of links, which the system refuses to root too.
TEST(AvidumpProgram, PrintsTheSystemsReason) {
    const TempFolder folder;
    std::filesystem::create_symlink("loop", folder.path("loop"));
    EXPECT_EQ(avidumpOf(folder.path("loop")).errors,
              "avidump: " + folder.path("loop") +
                  ": cannot be opened: the system refuses it: Too many levels of symbolic links\n");
}

}  // namespace
