// The contract of every fileio::File implementation.
#include "fileio/SystemFile.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace {

using fileio::File;

constexpr std::uint32_t kRead = 1;
constexpr std::uint32_t kWrite = 2;
constexpr std::uint32_t kReadWrite = 3;
constexpr std::uint32_t kShare = 8;

// One implementation: creates closed files and names their paths.
class Maker {
public:
    virtual ~Maker() = default;
    virtual File& makeFile() = 0;
    virtual std::string path(const std::string& name) = 0;
};

class SystemMaker : public Maker {
public:
    File& makeFile() override { return *m_files.emplace_back(std::make_unique<fileio::SystemFile>()); }
    std::string path(const std::string& name) override { return m_folder.path(name); }

private:
    TempFolder m_folder;  // destroyed last: files must be closed before their folder can be deleted
    std::vector<std::unique_ptr<File>> m_files;
};

class MemoryMaker : public Maker {
public:
    File& makeFile() override { return *m_files.emplace_back(std::make_unique<fileio::MemoryFile>(m_disk)); }
    std::string path(const std::string& name) override { return name; }

private:
    fileio::MemoryDisk m_disk;
    std::vector<std::unique_ptr<File>> m_files;
};

class FaultMaker : public Maker {
public:
    File& makeFile() override {
        return *m_files.emplace_back(std::make_unique<fileio::FaultFile>(m_memory.makeFile()));
    }
    std::string path(const std::string& name) override { return name; }

private:
    MemoryMaker m_memory;
    std::vector<std::unique_ptr<File>> m_files;
};

struct Implementation {
    const char* name;
    std::function<std::unique_ptr<Maker>()> make;
};

class FileContract : public testing::TestWithParam<Implementation> {
protected:
    File& newFile() { return m_maker->makeFile(); }
    std::string path(const std::string& name) { return m_maker->path(name); }

    // Writes a file that holds `content`, closes it and returns its path.
    std::string written(const std::string& name, std::string_view content) {
        File& file = newFile();
        EXPECT_TRUE(file.open(path(name).c_str(), kWrite));
        EXPECT_EQ(file.write(content.data(), content.size()), content.size());
        file.close();
        return path(name);
    }

    File& openedForReading(std::string_view content) {
        const std::string where = written("content", content);
        File& file = newFile();
        EXPECT_TRUE(file.open(where.c_str(), kRead | kShare));
        return file;
    }

    static std::string readString(File& file, std::size_t count) {
        std::string text(count, '#');
        text.resize(static_cast<std::size_t>(file.read(text.data(), count)));
        return text;
    }

private:
    std::unique_ptr<Maker> m_maker = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Of, FileContract,
                         testing::Values(Implementation{"System", [] { return std::make_unique<SystemMaker>(); }},
                                         Implementation{"Memory", [] { return std::make_unique<MemoryMaker>(); }},
                                         Implementation{"Fault", [] { return std::make_unique<FaultMaker>(); }}),
                         [](const auto& implementation) { return std::string(implementation.param.name); });

TEST_P(FileContract, WhatWasWrittenIsReadBack) {
    EXPECT_EQ(readString(openedForReading("hello"), 5), "hello");
}

TEST_P(FileContract, AReadAtTheEndIsShort) {
    EXPECT_EQ(readString(openedForReading("hello"), 9), "hello");
}

TEST_P(FileContract, AReadPastTheEndReturnsNothing) {
    File& file = openedForReading("hello");
    ASSERT_TRUE(file.seek(6));
    EXPECT_EQ(readString(file, 1), "");
}

TEST_P(FileContract, AReadAdvancesThePositionByItsBytes) {
    File& file = openedForReading("hello");
    readString(file, 2);
    EXPECT_EQ(file.tell(), 2);
    readString(file, 9);
    EXPECT_EQ(file.tell(), 5);
}

TEST_P(FileContract, OnlyTheLow32BitsOfACountAreUsed) {
    File& file = openedForReading("hello");
    char buffer[2] = {};
    EXPECT_EQ(file.read(buffer, 0x1'0000'0002), 2u);
    EXPECT_EQ(file.tell(), 2);
}

TEST_P(FileContract, SeekIsFromTheStart) {
    File& file = openedForReading("hello");
    ASSERT_TRUE(file.seek(4));
    ASSERT_TRUE(file.seek(1));
    EXPECT_EQ(readString(file, 2), "el");
}

TEST_P(FileContract, SeekingFarPastTheEndIsAllowed) {
    File& file = openedForReading("hello");
    EXPECT_TRUE(file.seek(0x1'0000'0000));
    EXPECT_EQ(file.tell(), 0x1'0000'0000);
}

TEST_P(FileContract, ANegativePositionIsRefusedAndChangesNothing) {
    File& file = openedForReading("hello");
    ASSERT_TRUE(file.seek(3));
    EXPECT_FALSE(file.seek(-1));
    EXPECT_EQ(file.tell(), 3);
}

TEST_P(FileContract, SizeDoesNotDependOnThePosition) {
    File& file = openedForReading("hello");
    ASSERT_TRUE(file.seek(3));
    EXPECT_EQ(file.size(), 5);
    EXPECT_EQ(file.tell(), 3);
}

TEST_P(FileContract, AClosedFileFailsAllCalls) {
    File& file = openedForReading("hello");
    file.close();
    char byte = 0;
    EXPECT_EQ(file.read(&byte, 1), 0u);
    EXPECT_EQ(file.write(&byte, 1), 0u);
    EXPECT_FALSE(file.seek(0));
    EXPECT_EQ(file.tell(), 0);
    EXPECT_EQ(file.size(), 0);
}

TEST_P(FileContract, ClosingTwiceDoesNothing) {
    File& file = openedForReading("hello");
    file.close();
    file.close();
    EXPECT_EQ(file.size(), 0);
}

TEST_P(FileContract, AMissingFileCannotBeRead) {
    EXPECT_FALSE(newFile().open(path("missing").c_str(), kRead | kShare));
}

TEST_P(FileContract, WritingCreatesTheFile) {
    File& file = newFile();
    EXPECT_TRUE(file.open(path("new").c_str(), kWrite | kShare));
    EXPECT_EQ(file.size(), 0);
}

TEST_P(FileContract, WritingEmptiesAnExistingFile) {
    const std::string where = written("old", "old content");
    File& file = newFile();
    ASSERT_TRUE(file.open(where.c_str(), kWrite));
    EXPECT_EQ(file.size(), 0);
}

TEST_P(FileContract, ReadingAndWritingEmptiesTheFileToo) {
    const std::string where = written("old", "old content");
    File& file = newFile();
    ASSERT_TRUE(file.open(where.c_str(), kReadWrite | kShare));
    EXPECT_EQ(file.size(), 0);
    EXPECT_EQ(file.write("new", 3), 3u);
    ASSERT_TRUE(file.seek(0));
    EXPECT_EQ(readString(file, 9), "new");
}

TEST_P(FileContract, AFileOpenForWritingCannotBeRead) {
    File& file = newFile();
    ASSERT_TRUE(file.open(path("new").c_str(), kWrite));
    EXPECT_EQ(file.write("new", 3), 3u);
    ASSERT_TRUE(file.seek(0));
    EXPECT_EQ(readString(file, 3), "");
}

TEST_P(FileContract, AFileOpenForReadingCannotBeWritten) {
    File& file = openedForReading("hello");
    EXPECT_EQ(file.write("HELLO", 5), 0u);
    ASSERT_TRUE(file.seek(0));
    EXPECT_EQ(readString(file, 5), "hello");
}

TEST_P(FileContract, OnlySharingFlagsOpenNothing) {
    const std::string where = written("content", "hello");
    EXPECT_FALSE(newFile().open(where.c_str(), kShare));
}

TEST_P(FileContract, AModeOf0OpensNothing) {
    const std::string where = written("content", "hello");
    EXPECT_FALSE(newFile().open(where.c_str(), 0));
}

TEST_P(FileContract, TwoSharingReadersCanOpenOneFile) {
    const std::string where = written("content", "hello");
    EXPECT_TRUE(newFile().open(where.c_str(), kRead | kShare));
    EXPECT_TRUE(newFile().open(where.c_str(), kRead | kShare));
}

TEST_P(FileContract, AReaderWithoutSharingExcludesOthers) {
    const std::string where = written("content", "hello");
    ASSERT_TRUE(newFile().open(where.c_str(), kRead));
    EXPECT_FALSE(newFile().open(where.c_str(), kRead | kShare));
}

TEST_P(FileContract, AWriterIsRefusedWhileOthersRead) {
    File& reader = openedForReading("hello");
    EXPECT_FALSE(newFile().open(path("content").c_str(), kReadWrite | kShare));
    EXPECT_EQ(readString(reader, 9), "hello");
}

TEST_P(FileContract, AReaderIsRefusedWhileAnotherWrites) {
    const std::string where = written("content", "hello");
    ASSERT_TRUE(newFile().open(where.c_str(), kReadWrite | kShare));
    EXPECT_FALSE(newFile().open(where.c_str(), kRead | kShare));
}

TEST_P(FileContract, OpeningASecondPathClosesTheFirst) {
    const std::string first = written("first", "1st");
    const std::string second = written("second", "2nd");
    File& file = newFile();
    ASSERT_TRUE(file.open(first.c_str(), kRead));
    ASSERT_TRUE(file.open(second.c_str(), kRead));
    EXPECT_EQ(readString(file, 3), "2nd");
    EXPECT_TRUE(newFile().open(first.c_str(), kWrite));
}

// While a file is open for writing it cannot be opened again, not even by the same object.
TEST_P(FileContract, OpeningAgainClosesTheFirstBeforehand) {
    File& file = newFile();
    ASSERT_TRUE(file.open(path("alone").c_str(), kWrite));
    ASSERT_EQ(file.write("old", 3), 3u);
    EXPECT_TRUE(file.open(path("alone").c_str(), kWrite));
    EXPECT_EQ(file.size(), 0);
}

TEST_P(FileContract, OpeningAMissingPathClosesTheFirst) {
    const std::string first = written("first", "1st");
    File& file = newFile();
    ASSERT_TRUE(file.open(first.c_str(), kRead));
    ASSERT_FALSE(file.open(path("missing").c_str(), kRead));
    EXPECT_EQ(readString(file, 3), "");
    EXPECT_TRUE(newFile().open(first.c_str(), kWrite));
}

TEST_P(FileContract, ReopeningStartsAtTheBeginning) {
    const std::string where = written("content", "hello");
    File& file = newFile();
    ASSERT_TRUE(file.open(where.c_str(), kRead));
    ASSERT_TRUE(file.seek(3));
    ASSERT_TRUE(file.open(where.c_str(), kRead));
    EXPECT_EQ(file.tell(), 0);
}

TEST_P(FileContract, BlocksAreAlignedAndHave4096Bytes) {
    EXPECT_EQ(newFile().blockSize(), 4096u);
    EXPECT_EQ(newFile().blockAlignment(), 4096u);
}

// The fake's own: pieces in any order, over and beside each other, with zeros between them.
TEST(MemoryFile, HoldsWhatWasPutLast) {
    fileio::MemoryFile file(std::int64_t{12});
    file.put(8, {8, 9});
    file.put(2, {2, 3});
    file.put(3, {30, 40, 50, 60, 70, 80});
    file.put(4, {44});
    std::vector<std::uint8_t> bytes(20);
    bytes.resize(static_cast<std::size_t>(file.read(bytes.data(), bytes.size())));
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0, 0, 2, 30, 44, 50, 60, 70, 80, 9, 0, 0}));
}

}  // namespace
