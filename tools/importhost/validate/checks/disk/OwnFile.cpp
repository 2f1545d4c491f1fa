#include "importhost/validate/checks/disk/OwnFile.h"

#include "aviwriter/Sample.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"
#include "importhost/validate/checks/stage/OwnSample.h"

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

aviwriter::SampleOptions sampleToChange() {
    aviwriter::SampleOptions options;
    options.width = 48;
    options.height = 32;
    options.audio = {aviwriter::SampleAudio{}};
    return options;
}

// Of the first small clip that has pictures.
std::optional<Bytes> copiedBytes(PlayedPlugin& plugin) {
    CheckRun& run = plugin.run();
    for (const Clip& clip : run.clips()) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(clip.path, error);
        OpenClip open(plugin, clip);
        if (!error && size <= kMostCopied && open.has(Need::Pictures)) {
            run.note("the file that changes is a copy of " + clip.name);
            return readFile(clip.path);
        }
    }
    return std::nullopt;
}

}  // namespace

bool overwrite(const std::filesystem::path& path, const Bytes& bytes) {
    std::fstream out(path, std::ios::binary | std::ios::in | std::ios::out);
    if (!out) {
        out.open(path, std::ios::binary | std::ios::out);
    }
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out.flush());
}

OwnFile::OwnFile(PlayedPlugin& plugin)
    : m_clip{plugin.run().folder() / "changing.avi", "changing.avi", ClipKind::Unknown, std::nullopt} {
    std::optional<Bytes> copied = copiedBytes(plugin);
    m_isSample = !copied;
    if (m_isSample) {
        plugin.run().note("the file that changes is a sample");
    }
    m_bytes = copied ? std::move(*copied) : aviwriter::sampleBytes(sampleToChange());
    restore();
}

OwnFile::~OwnFile() {
    std::error_code ignored;
    std::filesystem::remove(m_clip.path, ignored);
}

void OwnFile::restore() {
    if (!overwrite(m_clip.path, m_bytes)) {
        throw std::runtime_error("'" + hostkit::toUtf8(m_clip.path) + "' cannot be written.");
    }
}

std::unique_ptr<OpenClip> OwnFile::open(PlayedPlugin& plugin) const {
    CheckRun& run = plugin.run();
    auto clip = std::make_unique<OpenClip>(plugin, m_clip);
    if (clip->has(Need::Pictures)) {
        return clip;
    }
    if (m_isSample && !run.hasOwnSamples()) {
        run.skip(kOwnSamplesAreForeign);
    }
    run.fail("the whole file is not opened: " + hostkit::resultText(clip->infoResult()));
    return nullptr;
}

void withOwnFile(CheckRun& run, const std::function<void(OwnFile& file, OpenClip& clip)>& look) {
    PlayedPlugin plugin(run);
    OwnFile file(plugin);
    if (const auto clip = file.open(plugin)) {
        look(file, *clip);
    }
}

std::int64_t Frames::delivered() const {
    return std::count_if(seen.begin(), seen.end(), [](const Seen& frame) { return frame.format != 0; });
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
        frames.seen.push_back(seen(clip.frame(frame)));
    }
    return frames;
}

std::string frameText(std::int64_t frame) { return "frame " + std::to_string(frame); }

std::int64_t expectFramesOrNone(CheckRun& run, OpenClip& clip, const Frames& frames) {
    std::int64_t unreadable = 0;
    for (std::size_t i = 0; i < frames.numbers.size(); ++i) {
        if (frames.seen[i].format == 0) {
            continue;
        }
        const Seen now = seen(clip.frame(frames.numbers[i]));
        if (now.result == imFileReadFailed) {
            ++unreadable;
        } else {
            run.expect(now == frames.seen[i], frameText(frames.numbers[i]) + " was answered with " +
                                                  hostkit::resultText(now.result) + " and is not what it was before");
        }
    }
    return unreadable;
}

void expectFrames(CheckRun& run, OpenClip& clip, const Frames& frames) {
    const std::int64_t unreadable = expectFramesOrNone(run, clip, frames);
    run.expectEqual("frames that cannot be read", unreadable, 0);
}

}  // namespace importhost::validate
