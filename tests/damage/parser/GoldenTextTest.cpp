// Small files that contain everything that a parser reads, compared with avidump's expected text for each.
#include "damage/parser/SmallFiles.h"

#include "avidump/Report.h"
#include "fileio/SystemFile.h"
#include "support/MemoryFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>

namespace damage {

// For the name of a failed test.
static void PrintTo(const SmallFile& file, std::ostream* out) { *out << file.name; }

namespace {

// avidump's text for the file, without its name.
std::string dumpOf(AviParser& parser, fileio::File& file) {
    const bool usable = parser.parse(file);
    return avidump::textOf(avidump::makeReport("file.avi", file, parser, usable, true));
}

std::string goldenOf(const SmallFile& file) {
    std::ifstream golden(std::string(GOLDEN_FOLDER) + "/" + file.name + ".txt", std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(golden), {}};
    std::erase(text, '\r');
    return text;
}

class GoldenText : public testing::TestWithParam<SmallFile> {
protected:
    Bytes m_bytes = GetParam().make();
    std::string m_golden = goldenOf(GetParam());
};

TEST_P(GoldenText, IsTheDumpOfTheFile) {
    fileio::MemoryFile file(m_bytes);
    AviParser parser;
    EXPECT_EQ(dumpOf(parser, file), m_golden);
}

TEST_P(GoldenText, IsTheDumpOfTheFileOnDisk) {
    const TempFolder folder;
    const std::string path = folder.path("file.avi");
    std::ofstream(folder.folder() / "file.avi", std::ios::binary)
        .write(reinterpret_cast<const char*>(m_bytes.data()), static_cast<std::streamsize>(m_bytes.size()));
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(path.c_str(), fileio::kOpenRead | fileio::kOpenShareRead));
    AviParser parser;
    EXPECT_EQ(dumpOf(parser, file), m_golden);
}

TEST_P(GoldenText, IsTheDumpWhenParsedAgain) {
    fileio::MemoryFile file(m_bytes);
    AviParser parser;
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(file.seek(0));
        ASSERT_EQ(dumpOf(parser, file), m_golden);
    }
}

std::string testNameOf(const testing::TestParamInfo<SmallFile>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, GoldenText, testing::ValuesIn(smallFiles().begin(), smallFiles().end()), testNameOf);

}  // namespace

}  // namespace damage
