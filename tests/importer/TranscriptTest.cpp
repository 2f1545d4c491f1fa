// The complete log of an import, compared with a text that a person has reviewed.
#include "importer/support/ImporterTest.h"

#include <algorithm>
#include <fstream>

using hostkit::ClipSession;

namespace {

class Transcript : public ImporterTest {
protected:
    // Opens, plays and closes a clip as an editor does.
    void import(const std::filesystem::path& path, PrPixelFormat first, PrPixelFormat second) {
        ClipSession clip(session(), path);
        EXPECT_EQ(clip.open().result, 0);
        clip.infos();
        clip.info(0);
        clip.pixelFormats();
        clip.channelLayout();
        EXPECT_EQ(clip.analysis(4096).result, 0);
        EXPECT_TRUE(clip.dataRate().dataCall.has_value());
        for (const int number : {0, 1}) {
            EXPECT_EQ(clip.frame(kTicksPerFrame * number, {frameFormat(first)}).result, 0);
        }
        EXPECT_EQ(clip.frame(kTicksPerFrame * 2, {frameFormat(second), frameFormat(first)}).result, 0);
        EXPECT_EQ(clip.quiet(), 0);
        EXPECT_EQ(clip.open().result, 0);
        EXPECT_EQ(clip.close(), 0);
    }

    static constexpr PrTime kTicksPerFrame = 10160640000;
};

Lines readGolden(const std::string& name) {
    std::ifstream file(std::string(GOLDEN_FOLDER) + "/" + name + ".txt", std::ios::binary);
    EXPECT_TRUE(file) << "the golden text " << name << " is missing";
    Lines lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

// Shows the first line that differs, and writes the whole text to the program's folder, to be reviewed and compared.
void expectGolden(const std::string& name, const Lines& actual) {
    const Lines golden = readGolden(name);
    if (actual == golden) {
        return;
    }
    std::ofstream file(name + ".actual.txt", std::ios::binary);
    for (const std::string& line : actual) {
        file << line << '\n';
    }
    const auto [ours, theirs] = std::mismatch(actual.begin(), actual.end(), golden.begin(), golden.end());
    ADD_FAILURE() << "line " << ours - actual.begin() + 1 << " is\n  "
                  << (ours == actual.end() ? "missing" : *ours) << "\nand should be\n  "
                  << (theirs == golden.end() ? "missing" : *theirs) << "\nsee " << name << ".actual.txt";
}

// The log without the dump of tables at the start.
Lines withoutDump(const Lines& lines) {
    Lines kept;
    bool inDump = false;
    for (const std::string& line : lines) {
        if (line == "----") {
            inDump = true;
        } else if (line.starts_with("Releasing suite: ")) {
            inDump = false;
        }
        if (!inDump) {
            kept.push_back(line);
        }
    }
    return kept;
}

}  // namespace

TEST_F(Transcript, OfTheStartContainsTheDumpOfAllTables) {
    expectGolden("start_with_dump", log());
}

TEST_F(Transcript, OfAVideoWithThreeSounds) {
    VideoSketch video = {.type = 104, .width = 16, .height = 8};
    video.frames = framesOf(video, 3);
    video.frames[1] = {};
    const auto path = write(
        "clip.avi",
        aviFile({videoStream(video),
                 audioStream({.format = aviwriter::waveFormatExtensible({.channels = 6, .channelMask = 0x3F})}),
                 audioStream({.format = aviwriter::waveFormatEx({.formatTag = 0x55}), .length = 0}),
                 audioStream({.format = aviwriter::pcmWaveFormat({.bitsPerSample = 24}), .length = 7})}));
    session().formats();
    session().subTypeNames(0x41564956);
    session().supports8();
    import(path, PrPixelFormat_YUYV_422_8u_601, PrPixelFormat_UYVY_422_8u_709);
    unload();
    expectGolden("video_with_three_sounds", withoutDump(log()));
}

TEST_F(Transcript, OfARefusedFileAndAFailedFrame) {
    ClipSession missing(session(), pathOf("missing.avi"));
    missing.open();
    ClipSession text(session(), write("text.avi", aviwriter::text("RIFF\x04\x00\x00\x00 no more than a few words")));
    text.open();
    text.info(0);
    text.pixelFormat(0);
    text.close();
    auto clip = openClip("clip.avi", aviFile({videoStream({.rate = 0, .frames = {Bytes(16)}})}));
    clip->frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u_709, 8, 4)});
    clip->frame(-1000000000000, {frameFormat(PrPixelFormat_VUYX_4444_8u_709)});
    clip->frame(0, {});
    clip->frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u_709, 1, 1)});
    clip->close();
    unload();
    Lines lines = withoutDump(log());
    for (std::string& line : lines) {
        // The address of the host's frame differs from run to run.
        if (const std::size_t planes = line.find("bytes}, {"); planes != std::string::npos) {
            line.resize(planes + 7);
        }
    }
    expectGolden("refused_file_and_failed_frame", lines);
}
