#include "importhost/console/OutputTarget.h"

#include "hostkit/system/Text.h"
#include "importhost/console/Program.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

using importhost::UsageError;
using importhost::OutputTarget;

class ReportTarget : public testing::Test {
protected:
    std::string fileHolding(const std::string& content) const {
        std::ofstream(hostkit::pathFromUtf8(path()), std::ios::binary) << content;
        return path();
    }
    std::string path() const { return m_folder.path("target"); }
    std::filesystem::path target() const { return hostkit::pathFromUtf8(path()); }

private:
    TempFolder m_folder;
};

TEST_F(ReportTarget, ANewFileIsGood) { EXPECT_NO_THROW(OutputTarget(path(), "<!doctype html", {})); }

TEST_F(ReportTarget, AnEarlierReportIsGoodInAnyCase) {
    EXPECT_NO_THROW(OutputTarget(fileHolding("<!DOCTYPE HTML>\n<p>"), "<!doctype html", {}));
}

TEST_F(ReportTarget, AClipIsNotOverwritten) {
    const std::string film = fileHolding("RIFF....AVI LIST");
    EXPECT_THROW(OutputTarget(film, "<!doctype html", {}), UsageError);
    EXPECT_EQ(std::filesystem::file_size(hostkit::pathFromUtf8(film)), 16U);
}

TEST_F(ReportTarget, AVeryShortFileIsNotOverwritten) {
    EXPECT_THROW(OutputTarget(fileHolding("<!d"), "<!doctype html", {}), UsageError);
}

TEST_F(ReportTarget, AnInputIsRefusedEvenIfItIsEmpty) {
    const std::string input = fileHolding("");
    EXPECT_THROW(OutputTarget(input, "{", {hostkit::pathFromUtf8(input)}), UsageError);
}

TEST_F(ReportTarget, AMissingFolderIsRefused) {
    EXPECT_THROW(OutputTarget(path() + "/missing/report.html", "<!doctype html", {}), UsageError);
}

TEST_F(ReportTarget, AFileThatIsNeverWrittenIsRemoved) {
    {
        const OutputTarget report(path(), "{", {});
        EXPECT_TRUE(std::filesystem::exists(target()));
    }
    EXPECT_FALSE(std::filesystem::exists(target()));
}

TEST_F(ReportTarget, AnEarlierReportStaysUntilReplaced) {
    fileHolding("{}\n");
    { const OutputTarget report(path(), "{", {}); }
    EXPECT_EQ(std::filesystem::file_size(target()), 3U);
}

TEST_F(ReportTarget, AnEmptyFileOfTheUsersStays) {
    fileHolding("");
    { const OutputTarget report(path(), "{", {}); }
    EXPECT_TRUE(std::filesystem::exists(target()));
}

TEST_F(ReportTarget, WhatIsWrittenReplacesTheOldContent) {
    fileHolding("{\"an\": \"earlier one\"}\n");
    { OutputTarget(path(), "{", {}).write("{}\n"); }
    EXPECT_EQ(std::filesystem::file_size(target()), 3U);
}

TEST_F(ReportTarget, WithoutAPathNothingIsWritten) {
    OutputTarget none("", "{", {});
    EXPECT_FALSE(none.isWanted());
    EXPECT_NO_THROW(none.write("{}"));
}

}  // namespace
