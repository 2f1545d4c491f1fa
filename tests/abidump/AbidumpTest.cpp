// The host's binary interface as text: complete, the same on every system, and comparable with the host's own headers.
#include "abidump/Dump.h"
#include "abidump/Tables.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/ChildProcess.h"
#include "hostkit/system/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

std::filesystem::path goldenPath() { return hostkit::PluginLibrary::programFolder() / "golden" / "abi.txt"; }

std::string goldenText() {
    std::ifstream in(goldenPath(), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

hostkit::ChildResult run(const std::string& fileName, const std::vector<std::string>& arguments) {
    hostkit::ChildResult result = hostkit::runProgram(hostkit::PluginLibrary::programFolder() / fileName, arguments);
    std::erase(result.output, '\r');
    return result;
}

std::vector<abidump::Record> allRecords() {
    std::vector<abidump::Record> all;
    for (const auto& records : {abidump::basicRecords(), abidump::callbackTables(), abidump::suiteTables(),
                                abidump::importerRecords(), abidump::asyncRecords()}) {
        all.insert(all.end(), records.begin(), records.end());
    }
    return all;
}

TEST(Abidump, TheTextEqualsTheCommittedOne) {
    EXPECT_EQ(abidump::dumpText(), goldenText()) << "If the change is intended: abidump > docs/abi.txt";
}

TEST(Abidump, EveryByteOfARecordBelongsToAMember) {
    const std::vector<abidump::Record> records = allRecords();
    EXPECT_EQ(records.size(), 38U);
    for (const abidump::Record& record : records) {
        std::size_t end = 0;
        for (const abidump::Member& member : record.members) {
            EXPECT_EQ(member.offset, end) << record.name << "::" << member.name;
            end = member.offset + member.size;
        }
        EXPECT_EQ(end, record.size) << record.name;
    }
}

TEST(Abidump, TheProgramPrintsTheText) {
    const hostkit::ChildResult result = run(ABIDUMP_FILE_NAME, {});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, goldenText());
}

TEST(Abidump, TheProgramFindsItsOwnTextEqual) {
    const hostkit::ChildResult result = run(ABIDUMP_FILE_NAME, {hostkit::toUtf8(goldenPath())});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "No difference.\n");
}

TEST(Abidump, AMissingFileIsAUsageError) { EXPECT_EQ(run(ABIDUMP_FILE_NAME, {"missing.txt"}).exitCode, 2); }

TEST(Abidump, OtherHeadersDifferWhereTheirMembersDo) {
    const hostkit::ChildResult result = run(ABIDUMP_PLAYED_FILE_NAME, {hostkit::toUtf8(goldenPath())});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "  imFileInfoRec8: 5373 bytes\n"
                             "-      736     1  alwaysUnquiet\n"
                             "+        missing  alwaysUnquiet\n");
}

TEST(AbidumpDifferences, ALongerRecordIsShownWithTheMembersThatMoved) {
    EXPECT_EQ(abidump::differences("ours\n\na: 8 bytes\n       0     4  x\n       4     4  y\n",
                               "theirs\n\na: 12 bytes\n       0     4  x\n       8     4  y\n"),
              "- a: 8 bytes\n"
              "+ a: 12 bytes\n"
              "-        4     4  y\n"
              "+        8     4  y\n");
}

TEST(AbidumpDifferences, ANumberIsShownUnderItsHeading) {
    EXPECT_EQ(abidump::differences("ours\n# Results\n       0  imNoErr\n       2  imBadFile\n",
                               "theirs\n# Results\n       0  imNoErr\n       3  imBadFile\n"),
              "  # Results\n"
              "-        2  imBadFile\n"
              "+        3  imBadFile\n");
}

TEST(AbidumpDifferences, WindowsLineEndsAreIgnored) {
    EXPECT_EQ(abidump::differences("ours\r\n       2  imBadFile\r\n", "theirs\n       2  imBadFile\n"), "");
}

TEST(AbidumpDifferences, LinesMissingAtTheEndAreShown) {
    EXPECT_EQ(abidump::differences("ours\n       2  imBadFile\n", "theirs\n"), "-        2  imBadFile\n+ \n");
}

}  // namespace
