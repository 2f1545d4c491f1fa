#include "aviwriter/ByteSink.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

using namespace aviwriter;

namespace {

TEST(MemorySink, AGapReadsAsZeros) {
    MemorySink sink;
    sink.write(3, {7});
    sink.write(0, {1});
    EXPECT_EQ(sink.bytes(), (Bytes{1, 0, 0, 7}));
}

TEST(FileSink, WritesTheSameAsMemoryUnderAnyName) {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / u8"aviwriter-Prüfung-試験.bin";
    FileSink sink(path);
    sink.write(3, {7});
    sink.write(0, {1});
    sink.write(4, {9});
    sink.close();
    std::ifstream file(path, std::ios::binary);
    const Bytes bytes(std::istreambuf_iterator<char>(file), {});
    file.close();
    std::filesystem::remove(path);
    EXPECT_EQ(bytes, (Bytes{1, 0, 0, 7, 9}));
}

TEST(FileSink, ReachesPositionsBeyondFourGib) {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "aviwriter-large.bin";
    FileSink sink(path);
    sink.write(std::uint64_t{5} << 30, {7});
    sink.close();
    const std::uintmax_t size = std::filesystem::file_size(path);
    std::filesystem::remove(path);
    EXPECT_EQ(size, (std::uintmax_t{5} << 30) + 1);
}

TEST(FileSink, AMissingFolderIsAnError) {
    EXPECT_THROW(FileSink(std::filesystem::path("no-such-folder") / "file.avi"), std::runtime_error);
}

}  // namespace
