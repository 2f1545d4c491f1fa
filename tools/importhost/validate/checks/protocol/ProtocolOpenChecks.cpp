// Opening what is a clip and what is none.
#include "importhost/console/Refusal.h"
#include "importhost/validate/checks/protocol/ClipFacts.h"
#include "importhost/validate/checks/protocol/OtherProgram.h"
#include "importhost/validate/checks/protocol/ProtocolParts.h"

#include "commandline/OpenFailure.h"
#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

namespace {

using hostkit::resultText;

// A file that cannot be opened: the answer, and nothing left behind.
void expectRefused(CheckRun& run, PlayedPlugin& plugin, const std::filesystem::path& path,
                   const hostkit::ClipOptions& options = {}) {
    hostkit::ClipSession clip(plugin.session(), path, options);
    run.expectResult("the answer to opening it", clip.open().result, imBadFile);
    run.expect(clip.privateData() == nullptr, "private data was given for a file that is not open");
    run.expect(clip.fileRef() == imInvalidHandleValue(), "a file handle was given for a file that is not open");
}

void expectOpens(CheckRun& run, PlayedPlugin& plugin, const std::filesystem::path& path) {
    hostkit::ClipSession clip(plugin.session(), path);
    run.expectResult("the answer to opening it", clip.open().result);
    run.expect(clip.privateData() != nullptr, "no private data was given for an open file");
}

// A user's file may well be none for this importer; but its user wants to know.
void tellRefused(CheckRun& run, const OpenClip& clip) {
    if (clip.clip().kind == ClipKind::Good) {
        run.fail(clip.refusal());
    } else {
        const std::filesystem::path& path = clip.clip().path;
        run.warn(clip.refusal() + ": " + (clip.openResult() != imNoErr ? openFailure(path) : describeRefusal(path)));
        run.notImported(clip.clip());
    }
}

// A file without a stream that this importer knows is described all the same.
bool hasContent(OpenClip& clip) { return clip.has(Need::Sound) || clip.has(Need::Pictures); }

void openAndClose(CheckRun& run, PlayedPlugin& plugin, const Clip& file) {
    OpenClip clip(plugin, file);
    if (!clip.isDescribed()) {
        tellRefused(run, clip);
        return;
    }
    if (!run.expectOf(file, hasContent(clip), "the plug-in finds neither pictures nor sound in it") &&
        file.kind == ClipKind::Unknown) {
        run.notImported(file);
    }
    run.expectResult("the answer to closing it", clip.session().close());
    run.expect(clip.session().fileRef() == imInvalidHandleValue(), "its file handle is still set after closing");
}

struct ForeignFile {
    std::string_view name;
    std::string_view bytes;
};

using namespace std::string_view_literals;

// What gets a wrong name, and what is left of clips.
constexpr ForeignFile kForeign[] = {
    {"empty.avi", ""sv},
    {"text.avi", "This was to become a film.\n"sv},
    {"four-bytes.avi", "RIFF"sv},
    {"riff-header.avi", "RIFF\x04\0\0\0AVI "sv},
    {"sound.wav.avi", "RIFF\x24\0\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1F\0\0\x40\x1F\0\0\x01\0\x08\0data\0\0\0\0"sv},
    {"picture.png.avi", "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"sv},
};

// The editor believes a file to be a clip until it was described: only then must it be refused.
void expectForeign(CheckRun& run, PlayedPlugin& plugin, const std::filesystem::path& path) {
    hostkit::ClipSession clip(plugin.session(), path);
    const csSDK_int32 opened = clip.open().result;
    run.expect(opened == imNoErr || opened == imBadFile, "it was opened with " + resultText(opened));
    if (opened != imNoErr) {
        return;
    }
    const auto info = clip.info(0);
    run.expectResult("the answer to describing it", info.result, imBadFile);
    run.expect(info.written.empty(), "bytes " + hostkit::describe(info.written) + " of the record were written");
    run.expectResult("the answer to the first pixel format", clip.pixelFormat(0).result, kExceptionResult);
    run.expectResult("the answer to closing it", clip.close());
}

// As far as a damaged file goes, all must be answered; what is told of it nobody can know.
void lookAtDamage(CheckRun& run, PlayedPlugin& plugin, const Clip& damaged) {
    OpenClip clip(plugin, damaged);
    if (!clip.isDescribed()) {
        run.expectResult("the answer to what cannot be described",
                         clip.openResult() == imNoErr ? clip.infoResult() : clip.openResult(), imBadFile);
        return;
    }
    if (clip.info().hasVideo != 0) {
        run.expectResult("the answer to the analysis", clip.session().analysis().result);
        const hostkit::DataRateAnswer rates = clip.session().dataRate();
        run.expectEqual("data rates", rates.samples.size(), static_cast<std::size_t>(clip.frameCount()));
        run.expect(!clip.formats().empty(), "it is described as having pictures and offers no pixel format");
    }
    const csSDK_int32 next = clip.session().info(1).result;
    run.expect(hostkit::isDescribed(next) || next == imBadFile, "stream 1 was answered with " + resultText(next));
    run.expectResult("the answer to closing it", clip.session().close());
}

std::filesystem::path fromText(std::u8string_view text) { return std::filesystem::path(std::u8string(text)); }

}  // namespace

void goodFilesOpen(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const Clip& clip : run.clips()) {
        run.step(clip.name);
        if (clip.kind == ClipKind::Good || clip.kind == ClipKind::Unknown) {
            openAndClose(run, plugin, clip);
        }
    }
}

void openRefusesNoFile(CheckRun& run) {
    PlayedPlugin plugin(run);
    const Clip good = ownClip(run, "good.avi");
    const std::pair<const char*, std::filesystem::path> wrong[] = {
        {"a missing file", run.folder() / "missing.avi"},
        {"a file in a missing folder", run.folder() / "missing" / "clip.avi"},
        {"a folder", run.folder()},
        {"a path through a file", good.path / "clip.avi"},
        {"an empty path", {}},
    };
    for (const auto& [what, path] : wrong) {
        run.step(what);
        expectRefused(run, plugin, path);
    }
    run.step("a good file after those");
    expectOpens(run, plugin, good.path);
}

void foreignFiles(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const ForeignFile& file : kForeign) {
        run.step(std::string(file.name));
        writeFile(run.folder() / file.name, aviwriter::Bytes(file.bytes.begin(), file.bytes.end()));
        expectForeign(run, plugin, run.folder() / file.name);
    }
    for (const Clip& clip : run.clips()) {
        if (clip.kind == ClipKind::Foreign) {
            run.step(clip.name);
            expectForeign(run, plugin, clip.path);
        }
    }
}

void damagedFiles(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const Clip& clip : run.clips()) {
        if (clip.kind == ClipKind::Damaged || clip.kind == ClipKind::Unknown) {
            run.step(clip.name);
            lookAtDamage(run, plugin, clip);
        }
    }
}

void lockedFile(CheckRun& run) {
    PlayedPlugin plugin(run);
    const Clip clip = ownClip(run, "locked.avi");
    for (const auto& [what, use] : {std::pair("while another program writes it", OtherUse::Writes),
                                    std::pair("while another program locks it", OtherUse::Locks)}) {
        run.step(what);
        const OtherProgram other(clip.path, use);
        run.expect(other.hasFile(), "the file could not be taken for this check");
        expectRefused(run, plugin, clip.path);
    }
    run.step("once it is free again");
    expectOpens(run, plugin, clip.path);
}

void openAnyPath(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const char8_t* name : {u8"with blanks and (brackets) & more.avi", u8"no extension", u8"a.b.c..avi",
                                u8"Überlänge ñ ç ø.avi", u8"Фильм.avi", u8"映画 第一部.avi", u8"film \U0001F3AC.avi",
                                u8"Ordner für Фильмы/clip.avi"}) {
        const Clip clip = ownClip(run, fromText(name));
        run.step(clip.name);
        expectOpens(run, plugin, clip.path);
    }
    run.step("a path of 240 characters");
    const std::size_t room = 240 - std::min<std::size_t>(run.folder().u16string().size(), 200);
    const Clip clip = ownClip(run, std::string(room - 5, 'x').append(".avi"));
    expectOpens(run, plugin, clip.path);
}

void openAccessValues(CheckRun& run) {
    PlayedPlugin plugin(run);
    const Clip clip = ownClip(run, "access.avi");
    for (const csSDK_int32 access : {2, 3, 100, -1}) {
        run.step("access " + std::to_string(access));
        expectRefused(run, plugin, clip.path, {.access = access});
    }
    run.step("access for reading after those");
    expectOpens(run, plugin, clip.path);
}

void openStreamIndex(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, Need::Nothing, [&](OpenClip& clip) {
        const std::size_t streams = clip.session().infos().size();
        for (csSDK_int32 stream = 0; stream < static_cast<csSDK_int32>(streams); ++stream) {
            const Facts wanted = streamFacts(clip.session().info(stream));
            hostkit::ClipSession own(plugin.session(), clip.clip().path, {.streamIndex = stream});
            const std::string what = "opened as stream " + std::to_string(stream);
            if (run.expectResult(what, own.open().result)) {
                expectSame(run, what + " and described", streamFacts(own.info(stream)), wanted);
            }
        }
    });
}

}  // namespace importhost::validate
