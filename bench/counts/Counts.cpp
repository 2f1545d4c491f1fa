// Runs one case at a time, so that its instructions can be counted:
//   quorvane_counts files FOLDER     writes the files that the cases need
//   quorvane_counts CASE             runs the case in the folder that holds them
//
// Only measured() is counted; the counting program knows it by name. Each case first does its work once uncounted, so
// that one-time costs do not count.
#include "aviwriter/AviFileWriter.h"
#include "aviwriter/Sample.h"
#include "log/Log.h"
#include "measured/MeasuredClip.h"
#include "standin/Encoder.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kFrameBytes = 32 * 16 * 8;
constexpr csSDK_uint32 kSoundFrames = 1920;
constexpr std::uint32_t kDroppedClipFrames = 10'000;

// Interleaved streams, the first of them video. Chunks exist only as index entries.
void writeIndexedClip(const std::filesystem::path& file, aviwriter::IndexKind index, std::uint32_t chunks,
                      std::uint32_t streams) {
    const standin::StreamInfo info = {.type = 104, .width = 32, .height = 16, .colorSpace = 2, .range = 1};
    aviwriter::FileSink sink(file);
    const aviwriter::VideoTrack video = {.width = 32, .height = 16, .extraData = standin::encodeExtraData(info)};
    const std::vector<aviwriter::AudioTrack> audio(streams - 1);
    aviwriter::AviFileWriter writer(sink, {.index = index}, video, audio);
    for (std::uint32_t chunk = 0; chunk < chunks; ++chunk) {
        if (chunk % streams == 0) {
            writer.writeVideo({1, 2, 3, 4});
        } else {
            writer.writeAudio(chunk % streams - 1, {1, 2, 3, 4});
        }
    }
    writer.finish();
    sink.close();
}

// One picture, then only dropped ones.
void writeDroppedClip(const std::filesystem::path& file) {
    aviwriter::SampleOptions options = {.width = 32, .height = 16, .frames = kDroppedClipFrames};
    for (std::uint32_t frame = 1; frame < kDroppedClipFrames; ++frame) {
        options.dropped.insert(frame);
    }
    aviwriter::FileSink sink(file);
    aviwriter::writeSample(options, sink);
    sink.close();
}

void writeSample(const std::filesystem::path& file, aviwriter::SampleFormat format, std::uint16_t channels) {
    aviwriter::FileSink sink(file);
    const aviwriter::SampleAudio audio = {.format = format, .channels = channels};
    aviwriter::writeSample({.width = 32, .height = 16, .frames = 10, .audio = {audio}}, sink);
    sink.close();
}

void writeFiles(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const auto& [name, index] : {std::pair("openDml", aviwriter::IndexKind::openDml),
                                      std::pair("idx1", aviwriter::IndexKind::idx1)}) {
        writeIndexedClip(folder / (std::string(name) + ".avi"), index, 10'000, 1);
        writeIndexedClip(folder / (std::string(name) + "-long.avi"), index, 100'000, 1);
        writeIndexedClip(folder / (std::string(name) + "-32.avi"), index, 10'000, 32);
    }
    writeDroppedClip(folder / "dropped.avi");
    writeSample(folder / "float32x2.avi", aviwriter::SampleFormat::float32, 2);
    writeSample(folder / "float32x8.avi", aviwriter::SampleFormat::float32, 8);
    writeSample(folder / "pcm8x2.avi", aviwriter::SampleFormat::pcm8, 2);
    writeSample(folder / "pcm16x2.avi", aviwriter::SampleFormat::pcm16, 2);
}

}  // namespace

extern "C" {
__attribute__((noinline, visibility("default"))) void measured(const std::function<void()>& work) { work(); }
}

namespace {

void countOpen(const char* file) {
    MeasuredPlugin plugin(kFrameBytes);
    { const MeasuredClip warm(plugin, file); }
    measured([&] { const MeasuredClip clip(plugin, file); });
}

// A hundred at a time, so that other work is negligible.
void countFrames(const char* file, csSDK_int64 first) {
    MeasuredPlugin plugin(kFrameBytes);
    plugin.spy().decodes().leaveOut(true);
    MeasuredClip clip(plugin, file);
    clip.getFrame(0);
    measured([&] {
        for (csSDK_int64 frame = 0; frame < 100; ++frame) {
            clip.getFrame(first + frame);
        }
    });
}

void countSound(const char* file) {
    MeasuredPlugin plugin(kFrameBytes);
    MeasuredClip clip(plugin, file, kSoundFrames);
    clip.getSound(0, kSoundFrames);
    measured([&] {
        for (csSDK_uint32 request = 0; request < 100; ++request) {
            clip.getSound(request * 100, kSoundFrames);
        }
    });
}

// The only case that is counted in this program itself, because the call is compiled into it.
void countLogOff() {
    measured([] {
        for (int line = 0; line < 1000; ++line) {
            Log("line %d", line);
        }
    });
}

const std::map<std::string, std::function<void()>>& cases() {
    static const std::map<std::string, std::function<void()>> all = {
        {"log-off-1000", countLogOff},
        {"open-openDml-10000", [] { countOpen("openDml.avi"); }},
        {"open-openDml-100000", [] { countOpen("openDml-long.avi"); }},
        {"open-openDml-10000-in-32", [] { countOpen("openDml-32.avi"); }},
        {"open-idx1-10000", [] { countOpen("idx1.avi"); }},
        {"open-idx1-100000", [] { countOpen("idx1-long.avi"); }},
        {"open-idx1-10000-in-32", [] { countOpen("idx1-32.avi"); }},
        {"frames-100", [] { countFrames("float32x2.avi", 0); }},
        {"frames-dropped-100", [] { countFrames("dropped.avi", kDroppedClipFrames - 100); }},
        {"sound-float32x2-100", [] { countSound("float32x2.avi"); }},
        {"sound-float32x8-100", [] { countSound("float32x8.avi"); }},
        {"sound-pcm8x2-100", [] { countSound("pcm8x2.avi"); }},
        {"sound-pcm16x2-100", [] { countSound("pcm16x2.avi"); }},
    };
    return all;
}

void run(int count, char** arguments) {
    const std::string what = count > 1 ? arguments[1] : "cases";
    if (what == "cases") {
        for (const auto& [name, work] : cases()) {
            std::puts(name.c_str());
        }
    } else if (what == "files") {
        writeFiles(arguments[2]);
    } else {
        cases().at(what)();
    }
}

}  // namespace

int main(int count, char** arguments) {
    try {
        run(count, arguments);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvane_counts: %s\n", error.what());
        return 1;
    }
}
