#include "importhost/validate/checks/OwnFile.h"

#include "aviwriter/Sample.h"
#include "hostkit/Names.h"
#include "hostkit/Text.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace importhost::validate {

namespace {

// A bigger file of a user's is not copied to be cut.
constexpr std::uintmax_t kMostCopied = 32U << 20;

Bytes readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

aviwriter::SampleOptions ownSample() {
    aviwriter::SampleOptions options;
    options.width = 48;
    options.height = 32;
    options.audio = {aviwriter::SampleAudio{}};
    return options;
}

Bytes bytesFor(CheckRun& run, PlayedPlugin& plugin) {
    for (const Clip& clip : run.clips()) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(clip.path, error);
        OpenClip open(plugin, clip);
        if (!error && size <= kMostCopied && open.isDescribed() && open.has(Need::Pictures)) {
            run.note("the file that changes is a copy of " + clip.name);
            return readFile(clip.path);
        }
    }
    run.note("the file that changes is a sample");
    return aviwriter::sampleBytes(ownSample());
}

}  // namespace

bool writeFile(const std::filesystem::path& path, const Bytes& bytes) {
    std::fstream out(path, std::ios::binary | std::ios::in | std::ios::out);
    if (!out) {
        out.open(path, std::ios::binary | std::ios::out);
    }
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out.flush());
}

OwnFile::OwnFile(CheckRun& run, PlayedPlugin& plugin)
    : m_clip{run.folder() / "changing.avi", "changing.avi", ClipKind::Unknown, std::nullopt},
      m_bytes(bytesFor(run, plugin)) {
    restore();
}

OwnFile::~OwnFile() {
    std::error_code ignored;
    std::filesystem::remove(m_clip.path, ignored);
}

void OwnFile::restore() {
    if (!writeFile(m_clip.path, m_bytes)) {
        throw std::runtime_error("'" + hostkit::toUtf8(m_clip.path) + "' cannot be written.");
    }
}

Frames framesOf(OpenClip& clip) {
    Frames frames;
    const std::int64_t count = clip.frameCount();
    const std::int64_t step = std::max<std::int64_t>(1, count / 12);
    for (std::int64_t frame = 0; frame < count; frame += step) {
        frames.numbers.push_back(frame);
    }
    frames.numbers.push_back(count - 1);
    for (const std::int64_t frame : frames.numbers) {
        frames.pixels.push_back(pixelsOf(clip.frame(frame).frame));
    }
    return frames;
}

std::string frameText(std::int64_t frame) { return "frame " + std::to_string(frame); }

int expectFramesOrNone(CheckRun& run, OpenClip& clip, const Frames& frames) {
    int unreadable = 0;
    for (std::size_t i = 0; i < frames.numbers.size(); ++i) {
        const auto answer = clip.frame(frames.numbers[i]);
        if (answer.result == imFileReadFailed) {
            ++unreadable;
        } else if (!frames.pixels[i].empty()) {
            run.expect(pixelsOf(answer.frame) == frames.pixels[i],
                       frameText(frames.numbers[i]) + " was answered with " + hostkit::resultText(answer.result) +
                           " and is not what it was before");
        }
    }
    return unreadable;
}

void expectFrames(CheckRun& run, OpenClip& clip, const Frames& frames) {
    const int unreadable = expectFramesOrNone(run, clip, frames);
    run.expectEqual("frames that cannot be read", unreadable, 0);
}

}  // namespace importhost::validate
