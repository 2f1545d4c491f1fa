#include "HostFixture.h"

#include <algorithm>
#include <fstream>

aviwriter::SampleOptions smallClip() {
    aviwriter::SampleOptions options;
    options.width = 32;
    options.height = 16;
    options.frames = 3;
    aviwriter::SampleAudio audio;
    audio.sampleRate = 8000;
    options.audio = {audio};
    return options;
}

csSDK_uint32 codeOf(const char* characters) {
    csSDK_uint32 code = 0;
    for (int i = 3; i >= 0; --i) {
        code = code << 8 | static_cast<unsigned char>(characters[i]);
    }
    return code;
}

ClipFile::ClipFile(const aviwriter::SampleOptions& options) : m_path(m_folder.folder() / "clip.avi") {
    aviwriter::FileSink sink(m_path);
    aviwriter::writeSample(options, sink);
    sink.close();
}

std::vector<imFrameFormat> smallFrame() {
    return {{32, 16, PrPixelFormat_YUYV_422_8u_709}};
}

StandinCounters codecCounters() {
    StandinCounters counters;
    standin_counters(&counters);
    return counters;
}

void expectCodecAtRest() {
    const StandinCounters counters = codecCounters();
    EXPECT_EQ(counters.openInstances, 0u);
    EXPECT_EQ(counters.runningSessions, 0u);
    EXPECT_EQ(counters.outstandingInits, 0u);
}

Lines goldenLines(const std::string& name) {
    std::ifstream in(hostkit::PluginLibrary::programFolder() / "golden" / name);
    EXPECT_TRUE(in) << "The expected text " << name << " is missing from the program's folder.";
    Lines lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

void expectSameLines(const Lines& actual, const Lines& expected) {
    const std::size_t common = std::min(actual.size(), expected.size());
    for (std::size_t i = 0; i < common; ++i) {
        ASSERT_EQ(actual[i], expected[i]) << "in line " << i + 1;
    }
    EXPECT_EQ(actual.size(), expected.size());
}
