// Files as users have them: long, of the same name, damaged, or for another importer. The plug-in is right, so none of
// them may fail.
#include "ValidateProgram.h"

#include "aviwriter/Sample.h"
#include "support/TempFolder.h"

#include <fstream>

using namespace programs;

namespace {

aviwriter::SampleOptions film(std::uint32_t frames, std::uint32_t width, std::uint32_t height) {
    aviwriter::SampleOptions options;
    options.frames = frames;
    options.width = width;
    options.height = height;
    return options;
}

std::string written(const TempFolder& folder, const std::string& name, const aviwriter::Bytes& bytes) {
    const std::filesystem::path path = hostkit::pathFromUtf8(folder.path(name));
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return folder.path(name);
}

// Zeroes the middle third of the file: frames, as the headers and the index are at its ends.
aviwriter::Bytes withAHole(aviwriter::Bytes bytes) {
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 3), bytes.size() / 3, std::uint8_t{0});
    return bytes;
}

ProgramRun check(const std::string& pattern, const std::vector<std::string>& files) {
    std::vector<std::string> arguments = {"--only", pattern, "--level", "10", "--in-process"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    return validate(std::move(arguments));
}

// The check fills its buffer with 0xCD.
TEST(UserFiles, FrameSizesMayHaveAnyByte) {
    const TempFolder folder;
    const aviwriter::Bytes bytes = aviwriter::sampleBytes(film(600, 64, 48));
    const std::uint8_t size[] = {0xCD, 0x01, 0x00, 0x00};
    ASSERT_NE(std::search(bytes.end() - 600 * 16, bytes.end(), std::begin(size), std::end(size)), bytes.end());
    const ProgramRun run = check("data-rate", {written(folder, "film.avi", bytes)});
    EXPECT_EQ(run.exitCode, 0) << run.output;
}

TEST(UserFiles, LongClipsStayWithin64BitTimes) {
    const TempFolder folder;
    const ProgramRun run = check("odd-ticks", {written(folder, "long.avi", aviwriter::sampleBytes(film(300, 16, 16)))});
    expectOutput(run, 0, {"\npass     odd-ticks "});
}

TEST(UserFiles, TwoOfTheSameNameAreTwoClips) {
    const TempFolder folder;
    const std::string one = written(folder, "a/clip.avi", aviwriter::sampleBytes(film(5, 16, 16)));
    const std::string other = written(folder, "b/clip.avi", aviwriter::sampleBytes(film(5, 32, 16)));
    const ProgramRun run = check("frame-strides", {one, other});
    EXPECT_EQ(run.exitCode, 0) << run.output;
}

TEST(UserFiles, FoldersDistinguishFilesOfTheSameName) {
    const TempFolder folder;
    const std::string one = written(folder, "a/clip.avi", {});
    const std::string other = written(folder, "b/clip.avi", {});
    const ProgramRun run = check("good-files-open", {one, other});
    EXPECT_TRUE(contains(run.output, hostkit::toUtf8(std::filesystem::path("b") / "clip.avi") +
                                         ": the plug-in does not describe it: imBadFile (2): it is empty"))
        << run.output;
}

class DamagedFrames : public testing::TestWithParam<const char*> {};

TEST_P(DamagedFrames, AreAWarning) {
    const TempFolder folder;
    const std::string file = written(folder, "film.avi", withAHole(aviwriter::sampleBytes(film(25, 48, 32))));
    const ProgramRun run = check(GetParam(), {file});
    expectOutput(run, 0, {" is not delivered: imBadCompression (8)"});
}

std::string checkName(const testing::TestParamInfo<const char*>& test) {
    std::string name = test.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(UserFiles, DamagedFrames,
                         testing::Values("frame-first-and-last", "frame-repeats", "frame-every-pixel"),
                         checkName);

TEST(UserFiles, DamagedOnesPassTheOtherFrameChecks) {
    const TempFolder folder;
    const std::string file = written(folder, "film.avi", withAHole(aviwriter::sampleBytes(film(25, 48, 32))));
    const ProgramRun run = check("frame-*", {file});
    EXPECT_EQ(run.exitCode, 0) << run.output;
}

// The file ends after its headers.
TEST(UserFiles, WithNeitherPicturesNorSoundAreAWarning) {
    const TempFolder folder;
    aviwriter::Bytes bytes = aviwriter::sampleBytes(film(5, 48, 32));
    bytes.resize(300);
    const ProgramRun run = check("good-files-open", {written(folder, "headers.avi", bytes)});
    expectOutput(run, 0, {"headers.avi: the plug-in finds neither pictures nor sound in it",
                          "\nwarn     good-files-open "});
}

}  // namespace
