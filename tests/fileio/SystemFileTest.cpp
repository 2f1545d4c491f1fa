// Features of system files only: paths, handles, and refusals by the system.
#include "fileio/ReadHelpers.h"
#include "fileio/SystemFile.h"
#include "support/TempFolder.h"
#include "text/Utf.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

constexpr std::uint32_t kReadShared = 9;
constexpr std::uint32_t kWriteAlone = 2;

void* const kClosedHandle = reinterpret_cast<void*>(~std::uintptr_t{0});

void writeFile(const std::string& path, const std::string& content) {
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(path.c_str(), kWriteAlone));
    ASSERT_EQ(file.write(content.data(), content.size()), content.size());
}

std::string readFile(fileio::SystemFile& file) {
    std::string content(static_cast<std::size_t>(file.size()), '#');
    content.resize(static_cast<std::size_t>(file.read(content.data(), content.size())));
    return content;
}

TEST(SystemFile, ANonAsciiUtf8PathIsTheSameFileAsItsUtf16Form) {
    TempFolder folder;
    // U+00E9, U+65E5 U+672C, and U+1F3AC, which takes two UTF-16 units
    writeFile(folder.path("caf\xC3\xA9 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\xAC.avi"), "moving pictures");
    const std::u16string wide = utf16FromUtf8(folder.path("")) + u"caf\u00E9 \u65E5\u672C \U0001F3AC.avi";
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(wide.c_str(), kReadShared));
    EXPECT_EQ(readFile(file), "moving pictures");
}

TEST(SystemFile, TheHandleHasAllBitsSetWhileClosed) {
    fileio::SystemFile file;
    EXPECT_EQ(file.nativeHandle(), kClosedHandle);
}

TEST(SystemFile, TheHandleIsValidOnlyWhileOpen) {
    TempFolder folder;
    writeFile(folder.path("a"), "a");
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(folder.path("a").c_str(), kReadShared));
    EXPECT_NE(file.nativeHandle(), kClosedHandle);
    file.close();
    EXPECT_EQ(file.nativeHandle(), kClosedHandle);
}

TEST(SystemFile, AFailedOpenLeavesTheClosedHandle) {
    TempFolder folder;
    writeFile(folder.path("a"), "a");
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(folder.path("a").c_str(), kReadShared));
    ASSERT_FALSE(file.open(folder.path("missing").c_str(), kReadShared));
    EXPECT_EQ(file.nativeHandle(), kClosedHandle);
}

TEST(SystemFile, OpeningAgainUsesTheVirtualClose) {
    class Watched : public fileio::SystemFile {
    public:
        int closes = 0;
        void close() override {
            ++closes;
            fileio::SystemFile::close();
        }
    };
    TempFolder folder;
    writeFile(folder.path("a"), "a");
    Watched file;
    ASSERT_TRUE(file.open(folder.path("a").c_str(), kReadShared));
    EXPECT_EQ(file.closes, 0);
    ASSERT_TRUE(file.open(folder.path("a").c_str(), kReadShared));
    EXPECT_EQ(file.closes, 1);
    file.close();
    ASSERT_TRUE(file.open(folder.path("a").c_str(), kReadShared));
    EXPECT_EQ(file.closes, 2);
}

TEST(SystemFile, DestructionClosesTheFile) {
    TempFolder folder;
    writeFile(folder.path("a"), "a");
    {
        fileio::SystemFile file;
        ASSERT_TRUE(file.open(folder.path("a").c_str(), 1));
    }
    fileio::SystemFile next;
    EXPECT_TRUE(next.open(folder.path("a").c_str(), kWriteAlone));
}

TEST(SystemFile, AFileNeverOpenedClosesNothing) {
    // A POSIX system reports the closing of no descriptor; Windows takes it silently, so there
    // the calls are counted instead.
    errno = 0;
    { fileio::SystemFile never; }
    EXPECT_EQ(errno, 0);
}

TEST(SystemFile, AFolderCannotBeOpened) {
    TempFolder folder;
    fileio::SystemFile file;
    EXPECT_FALSE(file.open(folder.path("").c_str(), kReadShared));
}

TEST(SystemFile, AnEmptyPathCannotBeOpened) {
    fileio::SystemFile file;
    EXPECT_FALSE(file.open("", kReadShared));
    EXPECT_FALSE(file.open(u"", kReadShared));
}

TEST(SystemFile, TheSystemRefusesANegativePosition) {
    TempFolder folder;
    writeFile(folder.path("a"), "a");
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(folder.path("a").c_str(), kReadShared));
    EXPECT_THROW(
        try { fileio::seekOrThrow(file, -1); } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Seek error: pos: -1");
            throw;
        },
        std::runtime_error);
}

TEST(SystemFile, PositionsBeyond4GiBAreKept) {
    TempFolder folder;
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(folder.path("large").c_str(), 3));
    ASSERT_TRUE(file.seek(0x1'0000'0010));
    EXPECT_EQ(file.tell(), 0x1'0000'0010);
    EXPECT_EQ(file.size(), 0);
}

}  // namespace
