#include "importhost/validate/OutputTarget.h"

#include "hostkit/Text.h"
#include "importhost/Command.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

using importhost::UsageError;
using importhost::validate::expectOutput;

class OutputTarget : public testing::Test {
protected:
    std::string fileHolding(const std::string& content) const {
        std::ofstream(hostkit::pathFromUtf8(path()), std::ios::binary) << content;
        return path();
    }
    std::string path() const { return m_folder.path("target"); }

private:
    TempFolder m_folder;
};

TEST_F(OutputTarget, ANewFileIsGood) { EXPECT_NO_THROW(expectOutput(path(), "<!doctype html", {})); }

TEST_F(OutputTarget, AnEarlierReportIsGoodInWhateverCase) {
    EXPECT_NO_THROW(expectOutput(fileHolding("<!DOCTYPE HTML>\n<p>"), "<!doctype html", {}));
}

TEST_F(OutputTarget, AFilmIsNotOverwritten) {
    const std::string film = fileHolding("RIFF....AVI LIST");
    EXPECT_THROW(expectOutput(film, "<!doctype html", {}), UsageError);
    EXPECT_EQ(std::filesystem::file_size(hostkit::pathFromUtf8(film)), 16U);
}

TEST_F(OutputTarget, AFileThatIsShorterThanAReportsBeginningIsNotOverwritten) {
    EXPECT_THROW(expectOutput(fileHolding("<!d"), "<!doctype html", {}), UsageError);
}

TEST_F(OutputTarget, AnInputIsRefusedEvenIfItIsEmpty) {
    const std::string input = fileHolding("");
    EXPECT_THROW(expectOutput(input, "{", {hostkit::pathFromUtf8(input)}), UsageError);
}

TEST_F(OutputTarget, AFolderThatIsMissingIsRefused) {
    EXPECT_THROW(expectOutput(path() + "/missing/report.html", "<!doctype html", {}), UsageError);
}

}  // namespace
