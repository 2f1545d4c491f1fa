// The program's messages about files that it cannot open.
#include "avidump/AvidumpProgram.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace {

TEST(AvidumpProgram, PrintsWhyAFileCannotBeOpened) {
    const TempFolder folder;
    const struct {
        const char* name;
        const char* why;
    } rows[] = {{"missing.avi", "there is no such file"}, {"", "it is a directory"}};
    for (const auto& row : rows) {
        const hostkit::ChildResult run = avidumpOf(folder.path(row.name));
        EXPECT_EQ(run.exitCode, 1);
        const std::string text = "avidump: " + folder.path(row.name) + ": cannot be opened: " + row.why;
        EXPECT_EQ(run.errors.substr(0, text.size()), text);
    }
}

}  // namespace
