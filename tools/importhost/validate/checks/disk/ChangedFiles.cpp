// Files that change under the plug-in. What a system refuses to do to an open file is noted; where it can be played to
// the plug-in instead, it is.
#include "importhost/validate/checks/disk/DiskTopics.h"
#include "importhost/validate/checks/disk/OwnFile.h"

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/watch/DiskFaults.h"

#include <algorithm>

namespace importhost::validate {

namespace {

using hostkit::DiskFaults;

void expectAheadLike(OpenClip& clip, hostkit::AsyncSession& async, std::int64_t frame) {
    CheckRun& run = clip.plugin().run();
    const auto now = clip.frame(frame);
    const auto ahead = async.get(clip.timeOf(frame), {clip.wanted()});
    const csSDK_int32 wanted = now.result == imNoErr ? csSDK_int32{aiNoError} : csSDK_int32{aiUnknownError};
    run.expectAsyncResult(frameText(frame) + " of the asynchronous importer", ahead.result, wanted);
    run.expect(pixelsOf(ahead.frame) == pixelsOf(now.frame), frameText(frame) + " is another one when collected");
}

// --- file-shrinks-while-open ------------------------------------------------------------------------------------

// Cuts the file, or lets it seem so when the system does not let an open file be cut.
void cut(CheckRun& run, const OwnFile& file, DiskFaults& disk, std::uintmax_t bytes) {
    std::error_code error;
    std::filesystem::resize_file(file.path(), bytes, error);
    if (error) {
        run.note("the system refuses to cut an open file (" + error.message() + "): reads are made to end there");
        disk.endFilesAt(static_cast<std::int64_t>(bytes));
    }
}

void restore(OwnFile& file, DiskFaults& disk) {
    disk.clear();
    std::error_code error;
    if (std::filesystem::file_size(file.path(), error) != file.bytes().size()) {
        file.restore();
    }
}

void expectSilenceAtTheEnd(CheckRun& run, OpenClip& clip) {
    if (!clip.has(Need::Sound)) {
        return;
    }
    const PrAudioSample end = clip.info().audDuration;
    const auto position = std::max<PrAudioSample>(0, end - 1000);
    const auto answer = clip.sound(position, static_cast<csSDK_uint32>(end - position));
    run.expectResult("the answer to a request for the last sound", answer.result);
    for (const std::vector<float>& channel : answer.channels) {
        // Silence of 8-bit sound is its lowest value.
        const auto isSilent = [&](float sample) { return sample == channel.front() && (sample == 0 || sample == -1); };
        run.expect(std::all_of(channel.begin(), channel.end(), isSilent),
                   "the last sound, whose bytes are gone, is not silence");
    }
}

// So short a beginning of a file ends within its headers. Where else it is cut, there may have been no frames.
constexpr std::uintmax_t kNoFrames = 100;

void shrink(CheckRun& run, OwnFile& file, OpenClip& clip, DiskFaults& disk, hostkit::AsyncSession& async,
            std::uintmax_t bytes) {
    const std::int64_t last = clip.frameCount() - 1;
    const Frames frames = framesOf(clip);
    run.step("the file is cut to " + std::to_string(bytes) + " of " + std::to_string(file.bytes().size()) + " bytes");
    cut(run, file, disk, bytes);
    const std::int64_t unreadable = expectFramesOrNone(run, clip, frames);
    if (bytes <= kNoFrames) {
        run.expectEqual("frames that cannot be read", unreadable, frames.delivered());
    }
    if (bytes == 0) {
        expectSilenceAtTheEnd(run, clip);
    }
    if (async.isOpen()) {
        expectAheadLike(clip, async, 0);
        expectAheadLike(clip, async, last);
    }
    run.step("the file is whole again");
    restore(file, disk);
    expectFrames(run, clip, frames);
    if (async.isOpen()) {
        expectAheadLike(clip, async, last);
    }
}

}  // namespace

void fileShrinksWhileOpen(CheckRun& run) {
    withOwnFile(run, [&](OwnFile& file, OpenClip& clip) {
        DiskFaults disk(clip.plugin().library());
        hostkit::AsyncSession async(clip.plugin().session(), clip.session());
        async.create();
        const std::uintmax_t whole = file.bytes().size();
        for (const std::uintmax_t bytes : {whole / 2, whole / 3, kNoFrames, std::uintmax_t{0}}) {
            shrink(run, file, clip, disk, async, bytes);
        }
    });
}

// --- file-vanishes-while-open -----------------------------------------------------------------------------------

namespace {

void lookAtVanished(CheckRun& run, OpenClip& clip, const Frames& frames) {
    expectFrames(run, clip, frames);
    hostkit::AsyncSession async(clip.plugin().session(), clip.session());
    run.expectResult("the answer to making an asynchronous importer", async.create().result, imBadFile);
    OpenClip again(clip.plugin(), clip.clip());
    run.expectResult("the answer to opening the path", again.openResult(), imBadFile);
    run.expect(again.session().privateData() == nullptr, "a file that did not open has private data");
}

void expectOpens(CheckRun& run, OpenClip& clip, const Frames& frames) {
    OpenClip again(clip.plugin(), clip.clip());
    if (run.expect(again.isDescribed(), "it does not open: " + hostkit::resultText(again.infoResult()))) {
        expectFrames(run, again, frames);
    }
}

}  // namespace

void fileVanishesWhileOpen(CheckRun& run) {
    withOwnFile(run, [&](OwnFile& file, OpenClip& clip) {
        const Frames frames = framesOf(clip);
        std::error_code error;

        run.step("the file is renamed");
        const std::filesystem::path elsewhere = run.folder() / "elsewhere.avi";
        std::filesystem::rename(file.path(), elsewhere, error);
        if (error) {
            run.note("the system refuses to rename an open file: " + error.message());
        } else {
            lookAtVanished(run, clip, frames);
            std::filesystem::rename(elsewhere, file.path());
        }

        run.step("the file is deleted");
        std::filesystem::remove(file.path(), error);
        if (error || std::filesystem::exists(file.path())) {
            run.note("the system refuses to delete an open file: " + error.message());
        } else {
            lookAtVanished(run, clip, frames);
            file.restore();
        }

        run.step("the file is back");
        expectFrames(run, clip, frames);
        expectOpens(run, clip, frames);
    });
}

// --- file-changes-while-quiet -----------------------------------------------------------------------------------

namespace {

Bytes firstPart(const Bytes& bytes, std::size_t count) {
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(count, bytes.size()))};
}

// What stands at the path when the editor comes back; nothing for no file.
struct Change {
    const char* what;
    std::optional<Bytes> (*bytes)(const Bytes& whole);
};

constexpr Change kChanges[] = {
    {"deleted", [](const Bytes&) -> std::optional<Bytes> { return std::nullopt; }},
    {"emptied", [](const Bytes&) -> std::optional<Bytes> { return Bytes{}; }},
    {"cut to its first third", [](const Bytes& whole) -> std::optional<Bytes> {
         return firstPart(whole, whole.size() / 3);
     }},
    {"cut within its headers", [](const Bytes& whole) -> std::optional<Bytes> { return firstPart(whole, 200); }},
    {"replaced by something that is no clip", [](const Bytes& whole) -> std::optional<Bytes> {
         return Bytes(whole.size(), 0x20);
     }},
};

void put(const std::filesystem::path& path, const std::optional<Bytes>& bytes) {
    std::filesystem::remove(path);
    if (bytes) {
        overwrite(path, *bytes);
    }
}

// The description is still that of the old file: frames that the new one does not have cannot be read, and bytes that
// are no frame cannot be decoded.
void expectNoGarbage(CheckRun& run, OpenClip& clip, const Frames& frames) {
    for (std::size_t i = 0; i < frames.numbers.size(); ++i) {
        const auto answer = clip.frame(frames.numbers[i]);
        const bool isRefused = answer.result == imFileReadFailed || answer.result == imBadCompression ||
                               answer.result == imFrameNotFound;
        run.expect(isRefused || seen(answer) == frames.seen[i],
                   frameText(frames.numbers[i]) + " was answered with " + hostkit::resultText(answer.result) +
                       " and is not what it was before");
    }
}

void changeWhileQuiet(CheckRun& run, OwnFile& file, OpenClip& clip, const Frames& frames, const Change& change) {
    run.step(std::string("while quiet the file is ") + change.what);
    run.expectResult("the answer to imQuietFile", clip.session().quiet());
    const std::optional<Bytes> bytes = change.bytes(file.bytes());
    put(file.path(), bytes);
    const csSDK_int32 opened = clip.session().open().result;
    run.expectResult("the answer to opening it again", opened, bytes ? csSDK_int32{imNoErr} : csSDK_int32{imBadFile});
    expectNoGarbage(run, clip, frames);
    const auto info = clip.session().info(0);
    if (!bytes || bytes->size() < 300 || bytes->front() == 0x20) {
        run.expectResult("the description", info.result, imBadFile);
    }

    run.step(std::string("the file that was ") + change.what + " is as before");
    clip.session().quiet();
    put(file.path(), file.bytes());
    run.expectResult("the answer to opening it again", clip.session().open().result);
    run.expectResult("the description", clip.session().info(0).result, clip.infoResult());
    expectFrames(run, clip, frames);
}

}  // namespace

void fileChangesWhileQuiet(CheckRun& run) {
    withOwnFile(run, [&](OwnFile& file, OpenClip& clip) {
        const Frames frames = framesOf(clip);
        for (const Change& change : kChanges) {
            changeWhileQuiet(run, file, clip, frames, change);
        }
    });
}

}  // namespace importhost::validate
