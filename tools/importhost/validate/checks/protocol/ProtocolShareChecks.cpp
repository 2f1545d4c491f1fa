// Clips that other programs want too.
#include "importhost/validate/checks/protocol/ClipFacts.h"
#include "importhost/validate/checks/protocol/OtherProgram.h"
#include "importhost/validate/checks/protocol/ProtocolParts.h"

#include "hostkit/sessions/Names.h"

#include <fstream>
#include <iterator>

namespace importhost::validate {

namespace {

using hostkit::resultText;

void expectAccess(CheckRun& run, const std::filesystem::path& path, OtherUse use, bool wanted,
                  const std::string& otherwise) {
    run.expect(OtherProgram(path, use).hasFile() == wanted, otherwise);
}

// Size and time of the last change; the content too where that is soon read.
std::string stateOf(const std::filesystem::path& path) {
    constexpr std::uintmax_t kSoonRead = 1 << 24;
    const std::uintmax_t size = std::filesystem::file_size(path);
    std::string text = std::to_string(size) + " bytes, changed at " +
                       std::to_string(std::filesystem::last_write_time(path).time_since_epoch().count());
    if (size <= kSoonRead) {
        std::ifstream in(path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        text.append(", sum ").append(sumOf(bytes.data(), bytes.size()));
    }
    return text;
}

}  // namespace

void openShares(CheckRun& run) {
    PlayedPlugin plugin(run);
    const Clip own = ownClip(run, "shared.avi");
    hostkit::ClipSession clip(plugin.session(), own.path);
    const auto open = [&](const std::string& when) {
        run.step(when);
        run.expectResult("the answer to opening it", clip.open().result);
        expectAccess(run, own.path, OtherUse::Reads, true, "another program cannot read it");
        expectAccess(run, own.path, OtherUse::Writes, false, "another program may change it under the clip");
    };
    open("opened");
    run.step("quiet");
    clip.quiet();
    expectAccess(run, own.path, OtherUse::Locks, true, "another program cannot have it for itself");
    open("opened again");
    run.step("closed");
    clip.close();
    expectAccess(run, own.path, OtherUse::Locks, true, "another program cannot have it for itself");
    std::error_code refused;
    std::filesystem::rename(own.path, run.folder() / "renamed.avi", refused);
    run.expect(!refused, "it cannot be renamed");
}

void filesAreLeftAlone(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const Clip& clip : run.clips()) {
        run.step(clip.name);
        const std::string before = stateOf(clip.path);
        {
            OpenClip open(plugin, clip);
            if (open.isDescribed()) {
                clipFacts(open);
                open.session().quiet();
                open.session().open();
            }
        }
        run.expectEqual("the file after importing it", stateOf(clip.path), before);
    }
}

void reopenOfALostFile(CheckRun& run) {
    PlayedPlugin plugin(run);
    const Clip own = ownClip(run, "lost.avi");
    hostkit::ClipSession clip(plugin.session(), own.path);
    run.expectResult("the answer to opening it", clip.open().result);
    void* const privateData = clip.privateData();
    clip.quiet();

    run.step("gone while the clip was quiet");
    const std::filesystem::path elsewhere = run.folder() / "elsewhere.avi";
    std::filesystem::rename(own.path, elsewhere);
    run.expectResult("the answer to opening it again", clip.open().result, imBadFile);
    if (!run.expect(clip.privateData() == privateData, "the clip's private data changed")) {
        return;
    }
    run.step("back again");
    std::filesystem::rename(elsewhere, own.path);
    run.expectResult("the answer to opening it again", clip.open().result);
    run.expect(clip.privateData() == privateData, "the clip's private data changed");
    run.expectResult("the answer to closing it", clip.close());
}

}  // namespace importhost::validate
